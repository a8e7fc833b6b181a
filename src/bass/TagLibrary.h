#pragma once

#include "bass.h"

#include "ports/Libraries.h"

#include <memory>
#include <string>

namespace velmo {

/// The two calls of the tag library. The library is opened at the first of them, so that a start
/// without a file never loads it. User-interface thread only.
class TagLibrary
{
public:
    /// `path` is that of the library beside the executable.
    TagLibrary(ports::Libraries& libraries, std::string path);
    virtual ~TagLibrary() = default;
    TagLibrary(const TagLibrary&) = delete;
    TagLibrary& operator=(const TagLibrary&) = delete;

    /// The channel's tag of its own format, by a format text such as "%TITL"; empty if there is no
    /// value. Raises a `RunError` if the library is missing.
    virtual std::string TAGS_Read(DWORD handle, const char* format);

    /// The same of the ID3v1 tag.
    virtual std::string TAGS_ID3V1_Read(DWORD handle, const char* format);

private:
    using Call = const char* (*) (DWORD, const char*);

    void Load();

    ports::Libraries& m_libraries;
    std::string m_path;
    std::unique_ptr<ports::Libraries::Library> m_library;
    Call m_read = nullptr;
    Call m_readV1 = nullptr;
    bool m_missingReported = false;
};

/// The tag library's file beside the executable.
constexpr const char* TagLibraryFileName = "libvelmotags.so";

} // namespace velmo
