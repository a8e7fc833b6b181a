#include "modTags.h"

#include "EntryText.h"

#include "bass/FileOpening.h"
#include "core/NumberText.h"
#include "core/PathRules.h"
#include "core/TextRules.h"

#include <algorithm>
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
        text.erase(text.size() - std::min<std::size_t>(text.size(), 3));
    return text;
}

/// The name without its last four characters; nothing if it has no more than these.
std::string WithoutExtension(const std::string& name)
{
    constexpr std::size_t CutCharacters = 4;
    const std::size_t count = CountCharacters(name);
    return count > CutCharacters ? FirstCharacters(name, count - CutCharacters) : std::string();
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
    if (path.empty())
        return {};
    // A location can't be searched for; it stays as it is.
    if (path.find("://") == std::string::npos)
        path = EnsureTrailingBackslash(FileDirectory(path, m_files)) + m_files.DirSearch(path);
    return WithoutExtension(SplitPath(path).name);
}

std::string modTags::FoundFileTitle(std::string& path)
{
    const std::string name = SplitPath(path).name;
    path = EnsureTrailingBackslash(FileDirectory(path, m_files)) + name;
    return WithoutExtension(name);
}

std::string modTags::ReadFileTitle(std::string& path)
{
    const DWORD channel = OpenForReading(path);
    const std::string title = TitleOrClose(channel);
    Close(channel);
    return title.empty() ? FileNameTitle(path) : title;
}

bool modTags::ReadFileTitleAndLength(const std::string& path,
                                     std::string& title,
                                     std::string& length)
{
    title.clear();
    length.clear();
    const DWORD channel = OpenForReading(path);
    if (channel == 0)
        return false;
    title = TitleOrClose(channel);
    if (title.empty()) {
        std::string copy = path; // the caller's path stays as it is
        title = FileNameTitle(copy);
    }
    length = LengthText(channel);
    m_bass.BASS_ChannelStop(channel);
    Close(channel);
    return true;
}

std::string modTags::ReadFileLength(const std::string& path)
{
    const DWORD channel = OpenForReading(path);
    std::string length = LengthText(channel);
    Close(channel);
    return length;
}

std::string modTags::LengthText(DWORD channel) const
{
    const QWORD bytes = m_bass.BASS_ChannelGetLength(channel, 0);
    return FormatSeconds(RoundHalfEven(m_bass.BASS_ChannelBytes2Seconds(channel, bytes)));
}

/// `MakeTagTitle`; a failure of it closes the channel before it travels on.
std::string modTags::TitleOrClose(DWORD channel)
{
    try {
        return MakeTagTitle(channel);
    } catch (...) {
        Close(channel);
        throw;
    }
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
