#include "ListFile.h"

#include "core/RunError.h"

namespace velmo {

bool ReadListFile(ListFormat format,
                  const std::string& path,
                  ports::Files& files,
                  const EntryStyle& style,
                  controls::ListRows& rows)
{
    const std::optional<std::string> content = files.Read(path);
    if (!content)
        throw RunError(RunError::FileNotFound, "File not found: " + path);
    const ListOutcome outcome = ReadList(format, *content, style, rows);
    if (outcome == ListOutcome::CutShort)
        throw RunError(RunError::EndOfFile, "Input past end of file: " + path);
    return outcome == ListOutcome::Complete;
}

} // namespace velmo
