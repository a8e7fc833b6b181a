#include "modTags.h"

#include "EntryText.h"

#include "bass/FileOpening.h"
#include "core/NumberText.h"
#include "core/PathRules.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

namespace {

/// The longer of the two in characters; the second on equal length.
std::string Longer(std::string first, std::string second)
{
    return CountCharacters(first) > CountCharacters(second) ? std::move(first) : std::move(second);
}

std::string JoinArtistAndTitle(const std::string& artist, const std::string& title)
{
    std::string text = artist + " - " + title;
    if (text.starts_with(" -"))
        text.erase(0, 3);
    if (text.ends_with("- "))
        text.erase(text.size() - 3);
    return text;
}

} // namespace

modTags::modTags(const modBass& bass,
                 TagLibrary& tags,
                 ports::Files& files,
                 std::string applicationDirectory)
    : m_bass(bass)
    , m_tags(tags)
    , m_files(files)
    , m_applicationDirectory(std::move(applicationDirectory))
{}

std::string modTags::MakeTagTitle(DWORD channel)
{
    m_files.SetCurrentDirectory(m_applicationDirectory);
    const std::string artist =
        Longer(m_tags.TAGS_Read(channel, "%ARTI"), m_tags.TAGS_ID3V1_Read(channel, "%ARTI"));
    const std::string title =
        Longer(m_tags.TAGS_Read(channel, "%TITL"), m_tags.TAGS_ID3V1_Read(channel, "%TITL"));
    return JoinArtistAndTitle(artist, title);
}

std::string modTags::FileNameTitle(std::string& path)
{
    constexpr std::size_t CutCharacters = 4;
    if (path.empty())
        return {};
    // A location can't be searched for; it stays as it is.
    if (path.find("://") == std::string::npos)
        path = EnsureTrailingBackslash(FileDirectory(path, m_files)) + m_files.DirSearch(path);
    const std::string name = SplitPath(path).name;
    const std::size_t count = CountCharacters(name);
    return count > CutCharacters ? FirstCharacters(name, count - CutCharacters) : std::string();
}

std::string modTags::ReadFileTitle(std::string& path)
{
    const DWORD channel = OpenForReading(path);
    std::string title;
    try {
        title = MakeTagTitle(channel);
    } catch (...) {
        Close(channel);
        throw;
    }
    Close(channel);
    return title.empty() ? FileNameTitle(path) : title;
}

std::string modTags::ReadFileLength(const std::string& path)
{
    const DWORD channel = OpenForReading(path);
    const double seconds =
        m_bass.BASS_ChannelBytes2Seconds(channel, m_bass.BASS_ChannelGetLength(channel, 0));
    Close(channel);
    return FormatSeconds(RoundHalfEven(seconds));
}

DWORD modTags::OpenForReading(const std::string& path)
{
    DWORD channel = OpenStream(m_bass, m_files, path, 0);
    if (channel == 0)
        channel = OpenLocation(m_bass, path, 0);
    if (channel == 0)
        channel = OpenModule(m_bass, m_files, path, 0);
    return channel;
}

void modTags::Close(DWORD channel) const
{
    m_bass.BASS_StreamFree(channel);
    m_bass.BASS_MusicFree(channel);
}

} // namespace velmo
