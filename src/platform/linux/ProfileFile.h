#pragma once

#include "core/ProfileText.h"
#include "ports/Files.h"
#include "ports/SettingsFile.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace velmo {

/// Profile files on this machine.
///
/// A read costs one look at the file's stamp: the parsed content is kept for as long as device,
/// inode, size and times stay the same. The times advance in steps, so that two changes within one
/// step look like one. Content is therefore kept only if the file's last change was well before it
/// was read.
class ProfileFile final : public ports::SettingsFile
{
public:
    explicit ProfileFile(ports::Files& files);

    std::string ProfileRead(const std::string& section,
                            const std::string& key,
                            const std::string& fallback,
                            const std::string& path) override;
    void ProfileWrite(const std::string& section,
                      const std::string& key,
                      const std::string& value,
                      const std::string& path) override;

private:
    struct Kept
    {
        ports::FileStamp stamp;
        ProfileText text;
    };

    std::optional<std::string> ContentToChange(const std::string& path);

    ports::Files& m_files;
    std::unordered_map<std::string, Kept> m_kept;
};

} // namespace velmo
