#include "LibraryOptions.h"

#include "core/CaseRules.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"

#include <array>

namespace velmo {

namespace {

struct Algorithm
{
    const char* name;
    DWORD number;
};

// Kept: "good" is the highest number, and "highest" the one below it.
constexpr std::array Algorithms{
    Algorithm{"default", 0},
    Algorithm{"normal",  1},
    Algorithm{"good",    3},
    Algorithm{"highest", 2},
};

/// An option that is on or off, as the library takes it.
DWORD OnOff(modINI& settings, const char* key)
{
    constexpr DWORD On = ~DWORD{0};
    return IsTrue(settings.ReadSetting(sections::Sound, key, "False")) ? On : 0;
}

DWORD Milliseconds(modINI& settings, const char* key, const char* fallback)
{
    const std::string text = settings.ReadSetting(sections::Sound, key, fallback);
    return static_cast<DWORD>(RoundHalfEven(ParseNumber(text)));
}

} // namespace

std::optional<DWORD> AlgorithmNumber(const std::string& name)
{
    for (const Algorithm& algorithm : Algorithms)
        if (EqualsIgnoringCase(name, algorithm.name))
            return algorithm.number;
    return std::nullopt;
}

void ApplyLibraryOptions(const modBass& bass, modINI& settings)
{
    const DWORD logarithmic = OnOff(settings, keys::LogarithmicVolume);
    bass.BASS_SetConfig(BASS_CONFIG_CURVE_VOL, logarithmic);
    bass.BASS_SetConfig(BASS_CONFIG_CURVE_PAN, logarithmic);
    bass.BASS_SetConfig(BASS_CONFIG_FLOATDSP, OnOff(settings, keys::FloatDSP));
    if (const std::optional<DWORD> algorithm =
            AlgorithmNumber(settings.ReadSetting(sections::Sound, keys::Algorithm3D, "Default")))
        bass.BASS_SetConfig(BASS_CONFIG_3DALGORITHM, *algorithm);
    bass.BASS_SetConfig(BASS_CONFIG_BUFFER, Milliseconds(settings, keys::PlaybackBuffer, "500"));
    bass.BASS_SetConfig(BASS_CONFIG_NET_BUFFER,
                        Milliseconds(settings, keys::DownloadBuffer, "5000"));
    bass.BASS_SetConfig(BASS_CONFIG_NET_TIMEOUT,
                        Milliseconds(settings, keys::InternetConnectionTimeout, "5000"));
}

} // namespace velmo
