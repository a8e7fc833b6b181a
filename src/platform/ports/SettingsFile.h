#pragma once

#include <string>

namespace velmo::ports {

/// Key-value files with sections, read and written by the rules of profile files. No state is kept
/// between calls that an edit by another program could make stale. User-interface thread only;
/// never throws.
class SettingsFile
{
public:
    virtual ~SettingsFile() = default;

    /// The value of `key` in `section` of the file at `path`, at most 254 characters; `fallback` if
    /// the file, the section or the key is absent or the value is empty. Sections and keys ignore
    /// case.
    virtual std::string ProfileRead(const std::string& section,
                                    const std::string& key,
                                    const std::string& fallback,
                                    const std::string& path) = 0;

    /// Sets the key, adding section and file as needed; everything else in the file stays as it is.
    /// A failure is silent. Two processes that write different keys at once lose neither.
    virtual void ProfileWrite(const std::string& section,
                              const std::string& key,
                              const std::string& value,
                              const std::string& path) = 0;
};

} // namespace velmo::ports
