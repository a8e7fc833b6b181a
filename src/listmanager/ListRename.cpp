#include "ListRename.h"

#include "core/LineReader.h"
#include "core/TextRules.h"

#include <algorithm>
#include <optional>

namespace velmo {

ports::WriteResult RenameList(ports::Files& files,
                              const std::string& path,
                              const std::string& title)
{
    const std::optional<std::string> content = files.Read(path);
    if (!content)
        return ports::WriteResult::Failed;
    const std::string_view bytes = SkipByteOrderMark(*content);
    std::string line = "#ZVL20#" + title;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    line = IsWindows1252(bytes) ? EncodeWindows1252(line) : EncodeFileText(line);
    const std::size_t oldSize = LineReader(bytes).Next().size();
    if (line.size() == oldSize)
        return ports::WriteResult::Written;
    return files.ReplaceFile(path, line.append(bytes.substr(oldSize)));
}

} // namespace velmo
