#include "EntryMaker.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

namespace {

struct TitleAndLength
{
    std::string title;
    std::string length;
};

std::string Converted(std::string title, const AddingOptions& options)
{
    if (options.convertsPercent20)
        title = ConvertPercent20(std::move(title));
    if (options.convertsUnderscores)
        title = ConvertUnderscores(std::move(title));
    return title;
}

/// Of a file that is opened. Rewrites `path` where the title comes from the file's name.
TitleAndLength Read(std::string& path, const AddingOptions& options, modTags& tags)
{
    TitleAndLength found;
    if (options.style.lengths)
        tags.ReadFileTitleAndLength(path, found.title, found.length);
    else
        found.title = tags.ReadFileTitle(path);
    return found;
}

std::string Numbered(const std::string& title, const AddingOptions& options, std::size_t row)
{
    return options.style.numbers ? std::to_string(row) + ". " + title : title;
}

} // namespace

AddingOptions ReadAddingOptions(modINI& settings)
{
    const auto isOn = [&](const char* key) {
        return IsTrue(settings.ReadSetting(sections::Options, key, "False"));
    };
    return {
        .readsOnLoad = EqualsIgnoringCase(
            settings.ReadSetting(sections::Options, keys::ReadTitlesOn, "Display"), "load"),
        .convertsPercent20 = isOn(keys::ConvertPercent20),
        .convertsUnderscores = isOn(keys::ConvertUnderscore),
        .style = ReadEntryStyle(settings),
    };
}

EntryMaker::EntryMaker(forms::Playlist& playlist, modTags& tags)
    : m_playlist(playlist)
    , m_tags(tags)
{}

void EntryMaker::AddNamed(std::string path, const AddingOptions& options)
{
    TitleAndLength entry;
    if (options.readsOnLoad)
        entry = Read(path, options, m_tags);
    else
        entry.title = m_tags.FileNameTitle(path);
    const std::string title = Numbered(entry.title, options, m_playlist.pl.Count() + 1);
    AddRow(Converted(title, options), entry.length, path);
}

void EntryMaker::AddFound(std::string path, const AddingOptions& options)
{
    TitleAndLength entry;
    if (options.readsOnLoad)
        entry = Read(path, options, m_tags);
    else
        entry.title = m_tags.FoundFileTitle(path);
    const std::string title = Converted(std::move(entry.title), options);
    AddRow(Numbered(title, options, m_playlist.pl.Count() + 1), entry.length, path);
}

void EntryMaker::NormaliseFound(std::string& path)
{
    m_tags.FoundFileTitle(path);
}

void EntryMaker::AddRow(const std::string& title,
                        const std::string& length,
                        const std::string& path)
{
    m_playlist.pl.AddTexts({.Text = title, .Length = length, .Path = path});
}

} // namespace velmo
