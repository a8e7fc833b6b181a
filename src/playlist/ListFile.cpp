#include "ListFile.h"

#include "core/LineReader.h"
#include "core/RunError.h"
#include "core/TextRules.h"

#include <algorithm>
#include <cstddef>

namespace velmo {

namespace {

std::string FirstLineOf(std::string_view bytes)
{
    const std::string text = DecodeFileText(bytes);
    return std::string(LineReader(text).Next());
}

} // namespace

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

std::string FirstLineOfFile(const std::string& path, ports::Files& files)
{
    constexpr std::size_t Enough = 4096;
    const std::optional<std::string> start = files.ReadStart(path, Enough);
    if (!start || start->size() < Enough)
        return FirstLineOf(start.value_or(std::string()));
    const std::string_view bytes = SkipByteOrderMark(*start);
    const std::string_view line = LineReader(bytes).Next();
    // The whole file tells its encoding, which is the same for all only where there's plain ASCII.
    const bool isPlain = std::all_of(line.begin(), line.end(), [](char c) { return c >= 0; });
    return line.size() < bytes.size() && isPlain
               ? std::string(line)
               : FirstLineOf(files.Read(path).value_or(std::string()));
}

} // namespace velmo
