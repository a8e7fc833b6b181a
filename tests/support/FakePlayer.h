#pragma once

#include "core/RunError.h"
#include "core/TextRules.h"
#include "core/modINI.h"
#include "equalizer/EqualizerFiles.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmResources.h"
#include "forms/wmain.h"
#include "playlist/Adding.h"
#include "playlist/MediaFilter.h"
#include "playlist/TitleReader.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "sound/DjMethods.h"
#include "sound/Monitor.h"
#include "sound/Transport.h"
#include "sound/modBassFunctions.h"
#include "support/FakeBass.h"
#include "support/FakeDialogs.h"
#include "support/FakeFiles.h"
#include "support/FakeLibraries.h"
#include "support/FakeSettings.h"
#include "support/SmallFakes.h"
#include "visualisation/Spectrum.h"

#include <functional>
#include <map>
#include <string>

namespace velmo::test {

/// A tag library whose answers are a table: path and field to text, for each of the two tags.
class FakeTagLibrary final : public TagLibrary
{
public:
    FakeTagLibrary(const FakeBass& bass, ports::Libraries& none)
        : TagLibrary(none, "")
        , m_bass(bass)
    {}

    std::string TAGS_Read(DWORD handle, const char* format) override
    {
        return Answer(formatTags, handle, format);
    }
    std::string TAGS_ID3V1_Read(DWORD handle, const char* format) override
    {
        return Answer(id3v1Tags, handle, format);
    }

    /// Key: path, blank, format.
    std::map<std::string, std::string> formatTags;
    std::map<std::string, std::string> id3v1Tags;
    bool missing = false;

private:
    std::string Answer(const std::map<std::string, std::string>& table,
                       DWORD handle,
                       const char* format) const
    {
        if (missing)
            throw RunError(53, "File not found");
        const auto channel = m_bass.channels.find(handle);
        if (channel == m_bass.channels.end())
            return {};
        const auto text = table.find(channel->second.path + " " + format);
        return text == table.end() ? std::string() : text->second;
    }

    const FakeBass& m_bass;
};

/// Writes down what it is told.
class FakeStatusChanger final : public StatusChanger
{
public:
    void UpdateYahooPlaying(const std::string& path) override { Note("playing " + path); }
    void UpdateYahooStopped() override { Note("stopped"); }
    void UpdateYahooExit() override { Note("exit"); }

    std::vector<std::string> told;
    std::function<void(const std::string&)> onTold;

private:
    void Note(const std::string& text)
    {
        told.push_back(text);
        if (onTold)
            onTold(text);
    }
};

/// The logic of the player over fakes, as the program puts it together.
struct FakePlayer
{
    FakeBass bass;
    FakeFiles files;
    FakeSettings settingsFile;
    FakeDialogs dialogs;
    FakeLibraries libraries;
    FakeTagLibrary tagLibrary{bass, libraries};
    modINI settings{settingsFile, dialogs, "/app/"};
    modBass table = bass.Table();
    forms::wmain wmain;
    forms::Playlist playlist;
    forms::fX fX;
    forms::frmResources resources;
    forms::ErrMGR errMGR;
    TransportState state;
    modTags tags{table, tagLibrary, files, "/app/"};
    TrackForms trackForms{wmain, playlist, errMGR};
    FakeRandom random;
    FakeClock clock;
    FakeStatusChanger status;
    modPlaylist list{playlist, settings, files, "/app/"};
    FakeCollation collation;
    Ordering ordering{
        list, playlist, {collation, random, clock}
    };
    EntryMaker entries{playlist, tags};
    PluginTable plugins;
    MediaFilter mediaFilter{plugins};
    AddingModules addingModules{list, entries, mediaFilter, ordering};
    Adding adding{addingModules, playlist, settings, files};
    modFXFunctions equalizer{table, fX};
    EqualizerFiles curves{fX, equalizer, settings, files, dialogs, "/app/"};
    modBassFunctions tracks{
        table, settings, files, tags, equalizer, state, trackForms, {list, status}
    };
    RandomRow randomRow{random, clock};
    DjMethods dj{table, settings, state, trackForms, list, tracks, randomRow};
    Transport transport{
        table,
        settings,
        files,
        dialogs,
        state,
        trackForms,
        {list, status},
        mediaFilter,
        tracks,
        dj,
        randomRow
    };
    Monitor monitor{table, settings, state, trackForms, tracks, dj, transport};
    Spectrum spectrum{table, settings, wmain, state};

    /// The reader of titles, for a command line that names this file.
    TitleReader MakeReader(const std::string& startPath = {})
    {
        return {list, playlist, tags, ordering, tracks, settings, files, startPath};
    }

    void Set(const char* section, const std::string& key, const std::string& value)
    {
        settings.WriteSetting(section, key, value);
    }
    /// Several settings of a section: "X=1|Y=2".
    void SetAll(const char* section, const std::string& all)
    {
        for (const std::string_view setting : Split(all, '|')) {
            const auto [key, value] = std::pair(setting.substr(0, setting.find('=')),
                                                setting.substr(setting.find('=') + 1));
            Set(section, std::string(key), std::string(value));
        }
    }
    std::string Get(const char* section, const char* key)
    {
        return settings.ReadSetting(section, key, "");
    }

    /// A file that exists and that the library can open.
    void AddSound(const std::string& path, FakeSound sound)
    {
        files.files[path] = "";
        bass.sounds[path] = sound;
    }
};

} // namespace velmo::test
