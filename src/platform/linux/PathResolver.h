#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velmo {

/// What a path leads to once links are followed.
enum class FileKind
{
    None,
    Directory,
    Regular,
    Other, ///< pipe, device, socket
};

/// A text that holds a NUL names nothing; every other text is the system's business.
FileKind KindOfFile(const std::string& path);

/// The first name in `directory`, in byte order, that `wanted` accepts; nothing if there is none or
/// the directory cannot be read. "." and ".." are no names.
std::optional<std::string> FirstNameIn(const std::string& directory,
                                       const std::function<bool(const std::string&)>& wanted);

/// The path under which something exists that `path` names without regard to case: `path` itself if
/// it exists; else level by level the exact name where there is one, else the first match in byte
/// order.
std::optional<std::string> ResolveIgnoringCase(const std::string& path);

} // namespace velmo
