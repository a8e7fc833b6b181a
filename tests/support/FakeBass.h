#pragma once

#include "bass_fx.h"

#include "bass/modBass.h"

#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// A file that the fake library can open.
struct FakeSound
{
    double seconds = 0;
    bool isModule = false;
};

/// A sound library that plays nothing: files are entries of a table, time passes when the test says
/// so, and every call is written down. One at a time, since the library's functions carry no
/// address of theirs.
class FakeBass
{
public:
    FakeBass();
    ~FakeBass();
    FakeBass(const FakeBass&) = delete;
    FakeBass& operator=(const FakeBass&) = delete;

    /// A table whose functions act on this.
    modBass Table() const;

    /// `BASS_FX_GetVersion`, acting on this.
    static DWORD EffectsVersion() noexcept;

    /// The calls so far, parted by "; ". They are forgotten then.
    std::string TakeCalls();

    /// Lets that much time pass for all that plays.
    void Advance(double seconds);

    std::map<std::string, FakeSound> sounds; ///< by path
    std::vector<std::string> calls;          ///< in order, with the arguments that matter
    DWORD version = 0x02040000;
    bool initSucceeds = true;
    float volume = 1;
    DWORD effectsVersion = 0x02040000;
    /// Formats of the plugin files that can be loaded, by path.
    std::map<std::string, std::vector<BASS_PLUGINFORM>> plugins;
    std::map<HPLUGIN, BASS_PLUGININFO> loadedPlugins;

    struct Channel
    {
        std::string path;
        double seconds = 0;
        double position = 0;
        DWORD state = BASS_ACTIVE_STOPPED;
        bool isModule = false;
    };
    std::map<DWORD, Channel> channels; ///< those that are open

    /// What every open channel sounds like to `BASS_ChannelGetData`.
    std::vector<float> spectrum;
    std::vector<float> wave;
    DWORD chans = 2;

    /// An equalizer on a channel: its bands by their number.
    struct Effect
    {
        DWORD channel = 0;
        std::map<int, BASS_BFX_PEAKEQ> bands;
    };
    std::map<HFX, Effect> effects;
    HFX nextEffect = 9001;

    DWORD nextHandle = 101; ///< handles are never used twice

    static constexpr double BytesPerSecond = 44100 * 4;
};

} // namespace velmo::test
