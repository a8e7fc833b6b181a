#include "CommandLine.h"

#include "core/CaseRules.h"
#include "core/PathRules.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace velmo {

namespace {

/// "%" and two hex digits as one byte; anything else stays.
std::string PercentDecoded(std::string_view text)
{
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        const char* const digits = text.data() + at + 1;
        if (text[at] == '%' && at + 2 < text.size()
            && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            at += 2;
        } else {
            decoded += text[at];
        }
    }
    return decoded;
}

/// The path of a location on this machine.
std::optional<std::string> PathOfLocation(std::string_view text)
{
    constexpr std::string_view Scheme = "file://";
    constexpr std::string_view ThisMachine = "localhost/";
    if (!EqualsIgnoringAsciiCase(text.substr(0, Scheme.size()), Scheme))
        return std::nullopt;
    text.remove_prefix(Scheme.size());
    if (EqualsIgnoringAsciiCase(text.substr(0, ThisMachine.size()), ThisMachine))
        text.remove_prefix(ThisMachine.size() - 1);
    return PercentDecoded(text);
}

} // namespace

std::string CommandLineText(std::span<const std::string> arguments,
                            const std::string& entryDirectory,
                            ports::Files& files)
{
    std::string text;
    for (const std::string& argument : arguments) {
        if (&argument != &arguments.front())
            text += ' ';
        text += argument;
    }
    if (const std::optional<std::string> path = PathOfLocation(text))
        return *path;
    if (text.empty() || text.starts_with('/') || ShapeOf(text) == PathShape::Windows)
        return text;
    const std::string absolute = EnsureTrailingBackslash(entryDirectory) + text;
    return files.IsDirectory(absolute) || FileExists(absolute, files) ? absolute : text;
}

} // namespace velmo
