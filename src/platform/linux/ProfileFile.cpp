#include "ProfileFile.h"

#include <cstdint>
#include <ctime>
#include <memory>
#include <utility>

namespace velmo {

namespace {

/// A settings file may hold a password.
constexpr unsigned NewFileMode = 0600;

/// Two steps of the slowest kernel clock (100 Hz) by which files get their times.
constexpr std::int64_t StampStepNs = 20'000'000;

/// More files than the settings and the lists of one load are not worth remembering.
constexpr std::size_t MostKept = 8;

/// The time by the clock that stamps files.
std::int64_t NowNs()
{
    constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return static_cast<std::int64_t>(now.tv_sec) * NanosecondsPerSecond + now.tv_nsec;
}

std::string Chosen(std::string_view value, const std::string& fallback)
{
    return value.empty() ? fallback : std::string(value);
}

} // namespace

ProfileFile::ProfileFile(ports::Files& files)
    : m_files(files)
{}

std::string ProfileFile::ProfileRead(const std::string& section,
                                     const std::string& key,
                                     const std::string& fallback,
                                     const std::string& path)
{
    const std::int64_t beforeNs = NowNs();
    const std::optional<ports::FileStamp> stamp = m_files.Stamp(path);
    if (!stamp)
        return fallback;
    const auto kept = m_kept.find(path);
    if (kept != m_kept.end() && kept->second.stamp == *stamp)
        return Chosen(kept->second.text.Value(section, key), fallback);

    const std::optional<std::string> content = m_files.Read(path);
    if (!content)
        return fallback;
    ProfileText text(*content);
    std::string value = Chosen(text.Value(section, key), fallback);
    if (m_kept.size() >= MostKept)
        m_kept.clear();
    m_kept.erase(path);
    // A change while the content was read leaves another stamp than the one that is kept.
    if (beforeNs - stamp->changedNs > StampStepNs)
        m_kept.emplace(path, Kept{*stamp, std::move(text)});
    return value;
}

void ProfileFile::ProfileWrite(const std::string& section,
                               const std::string& key,
                               const std::string& value,
                               const std::string& path)
{
    // Without a lock, as in a directory that cannot be listed, the write is still worth trying.
    const std::unique_ptr<ports::Files::Lock> lock = m_files.LockDirectoryOf(path);
    const std::optional<std::string> content = ContentToChange(path);
    if (!content)
        return;
    if (const auto changed = ChangeProfile(*content, section, key, value)) {
        // A failed write is lost without a word.
        [[maybe_unused]] const auto result = m_files.ReplaceFile(path, *changed, NewFileMode);
    }
}

/// The file's content, empty for one that is yet to be made. Nothing if it exists and cannot be
/// read: it must not be replaced by a file of one key.
std::optional<std::string> ProfileFile::ContentToChange(const std::string& path)
{
    if (!m_files.Stamp(path))
        return std::string();
    return m_files.Read(path);
}

} // namespace velmo
