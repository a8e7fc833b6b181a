#include "UriList.h"

#include <QList>
#include <QString>
#include <QSysInfo>

#include <optional>

namespace velmo::qt {

namespace {

bool IsThisMachine(const QByteArray& host)
{
    return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0
           || host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

/// `file:/path`, `file:///path` and `file://host/path`.
std::optional<QByteArray> PathOf(QByteArray location)
{
    static constexpr QByteArrayView Scheme = "file:";
    if (location.left(Scheme.size()).compare(Scheme, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    location.remove(0, Scheme.size());
    if (location.startsWith("//")) {
        const qsizetype root = location.indexOf('/', 2);
        if (root < 0 || !IsThisMachine(location.mid(2, root - 2)))
            return std::nullopt;
        location.remove(0, root);
    }
    if (!location.startsWith('/'))
        return std::nullopt;
    return QByteArray::fromPercentEncoding(location);
}

} // namespace

std::vector<std::string> LocalFiles(const QByteArray& uriList)
{
    std::vector<std::string> paths;
    for (const QByteArray& line : uriList.split('\n'))
        if (const auto path = PathOf(line.trimmed()))
            paths.push_back(path->toStdString());
    return paths;
}

} // namespace velmo::qt
