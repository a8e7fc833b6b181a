#include "Reverb.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

/// By number. "Swer Pipe" and "Livingroom" are spelt so in the settings.
constexpr std::array<std::string_view, 26> Presets{
    "Generic",    "Padded Cell",    "Room",        "Bathroom",  "Livingroom", "Stone Room",
    "Auditorium", "Concert Hall",   "Cave",        "Arena",     "Hangar",     "Carpeted Hallway",
    "Hallway",    "Stone Corridor", "Alley",       "Forest",    "City",       "Mountains",
    "Quarry",     "Plain",          "Parking Lot", "Swer Pipe", "Underwater", "Drugged",
    "Dizzy",      "Psychotic",
};

float Number(modINI& settings, const char* key)
{
    return static_cast<float>(ParseNumber(settings.ReadSetting(sections::Sound, key, "0.0")));
}

} // namespace

int ReverbEnvironment(std::string_view preset)
{
    const auto* const found = std::find(Presets.begin(), Presets.end(), preset);
    return found == Presets.end() ? NoEnvironment : static_cast<int>(found - Presets.begin());
}

void ApplyReverb(const modBass& bass, modINI& settings)
{
    BASS_INFO info = {};
    bass.BASS_GetInfo(&info);
    if (info.eax == -1) // Kept: the library says 0 or 1, so this never holds.
        return;
    const int environment =
        ReverbEnvironment(settings.ReadSetting(sections::Sound, keys::EAX_Preset, "None"));
    if (environment == NoEnvironment)
        return;
    const float volume = Number(settings, keys::EAX_RVolume);
    const float decay = Number(settings, keys::EAX_RDecay);
    const float damping = Number(settings, keys::EAX_RDamping);
    bass.BASS_SetEAXParameters(environment, volume, decay, damping);
}

} // namespace velmo
