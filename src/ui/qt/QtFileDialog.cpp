#include "QtDialogs.h"
#include "QtText.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmo::qt {

namespace {

/// The toolkit's form of a filter: the label with its patterns in brackets at its end.
QString NameFilter(const QString& label, const QString& patterns)
{
    QStringList masks = patterns.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    masks.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
    QString text = label.trimmed();
    if (text.endsWith(QLatin1Char(')')))
        text.truncate(text.lastIndexOf(QLatin1Char('(')));
    return text.trimmed() + QStringLiteral(" (") + masks.join(QLatin1Char(' ')) + QLatin1Char(')');
}

struct Filters
{
    QStringList labels; ///< as logic gave them
    QStringList names;  ///< as the toolkit takes them
};

Filters SplitFilters(const std::string& filter)
{
    Filters filters;
    const QStringList parts = FromBytes(filter).split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        filters.labels << parts[i];
        filters.names << NameFilter(parts[i], parts[i + 1]);
    }
    return filters;
}

QWidget* WindowOf(const std::string& owner)
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (!owner.empty() && window->objectName() == FromBytes(owner) && window->isVisible())
            return window;
    return QApplication::activeWindow();
}

QFileDialog::FileMode ModeOf(ports::FileDialogKind kind)
{
    switch (kind) {
    case ports::FileDialogKind::Open: return QFileDialog::ExistingFile;
    case ports::FileDialogKind::OpenMany: return QFileDialog::ExistingFiles;
    case ports::FileDialogKind::Save: break;
    }
    return QFileDialog::AnyFile;
}

} // namespace

std::string FolderToOpenIn(const std::string& folder)
{
    QString place = FromBytes(folder);
    while (place.startsWith(QLatin1Char('/'))) {
        if (QFileInfo(place).isDir())
            return ToBytes(place);
        place.truncate(place.lastIndexOf(QLatin1Char('/')));
        if (place.isEmpty())
            break; // the root is no place that anybody meant
    }
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return ToBytes(QFileInfo(music).isDir() ? music : QDir::homePath());
}

ports::FileDialogAnswer QtDialogs::ChooseFiles(const ports::FileDialog& dialog)
{
    const Filters filters = SplitFilters(dialog.filter);
    QFileDialog box(
        WindowOf(dialog.owner), FromBytes(dialog.title), FromBytes(FolderToOpenIn(dialog.folder)));
    box.setObjectName(QStringLiteral("FileDialog"));
    box.setAcceptMode(dialog.kind == ports::FileDialogKind::Save ? QFileDialog::AcceptSave
                                                                 : QFileDialog::AcceptOpen);
    box.setFileMode(ModeOf(dialog.kind));
    if (!filters.names.isEmpty()) {
        box.setNameFilters(filters.names);
        box.selectNameFilter(filters.names.value(dialog.filterIndex - 1, filters.names.first()));
    }
    if (!dialog.fileName.empty())
        box.selectFile(FromBytes(dialog.fileName));
    if (box.exec() != QDialog::Accepted)
        return {};
    ports::FileDialogAnswer answer;
    for (const QString& path : box.selectedFiles())
        answer.paths.push_back(ToBytes(path));
    answer.label = ToBytes(filters.labels.value(filters.names.indexOf(box.selectedNameFilter())));
    return answer;
}

std::string QtDialogs::ChooseFolder(const std::string& title)
{
    QFileDialog box(QApplication::activeWindow(), FromBytes(title), FromBytes(FolderToOpenIn({})));
    box.setObjectName(QStringLiteral("FileDialog"));
    box.setFileMode(QFileDialog::Directory);
    box.setOption(QFileDialog::ShowDirsOnly);
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty())
        return {};
    return ToBytes(box.selectedFiles().constFirst());
}

void QtDialogs::ServeEvents()
{
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace velmo::qt
