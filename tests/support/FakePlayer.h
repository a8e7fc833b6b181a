#pragma once

#include "core/RunError.h"
#include "core/modINI.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "playlist/Adding.h"
#include "playlist/modTags.h"
#include "sound/Monitor.h"
#include "sound/modBassFunctions.h"
#include "support/FakeBass.h"
#include "support/FakeDialogs.h"
#include "support/FakeFiles.h"
#include "support/FakeSettings.h"

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

class NoLibraries final : public ports::Libraries
{
public:
    std::unique_ptr<Library> Open(const std::string&) override { return nullptr; }
};

/// The logic of the player over fakes, as the program puts it together.
struct FakePlayer
{
    FakeBass bass;
    FakeFiles files;
    FakeSettings settingsFile;
    FakeDialogs dialogs;
    NoLibraries libraries;
    FakeTagLibrary tagLibrary{bass, libraries};
    modINI settings{settingsFile, dialogs, "/app/"};
    modBass table = bass.Table();
    forms::wmain wmain;
    forms::Playlist playlist;
    forms::ErrMGR errMGR;
    TransportState state;
    modTags tags{table, tagLibrary, files, "/app/"};
    Adding adding{playlist, tags, settings, files};
    TrackForms trackForms{wmain, playlist, errMGR};
    modBassFunctions tracks{table, settings, files, tags, state, trackForms};
    Monitor monitor{table, state, trackForms, tracks};

    /// A file that exists and that the library can open.
    void AddSound(const std::string& path, FakeSound sound)
    {
        files.files[path] = "";
        bass.sounds[path] = sound;
    }
};

} // namespace velmo::test
