#include "QtText.h"

#include "core/UnicodePath.h"

namespace velmo::qt {

QString FromBytes(std::string_view bytes)
{
    // Not by QString::fromUtf16, which takes a byte-order mark away.
    return QStringView(ToUtf16(bytes)).toString();
}

std::string ToBytes(QStringView text)
{
    return FromUtf16({text.utf16(), static_cast<std::size_t>(text.size())});
}

} // namespace velmo::qt
