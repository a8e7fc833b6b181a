#include "TestFiles.h"
#include "bass_fx.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include <dlfcn.h>

namespace velmo::test {
namespace {

/// The functions of libraries that were opened at run time, as a program does.
struct Libraries
{
    void* engine = dlopen(BASS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    void* effects = dlopen(BASS_FX_LIBRARY, RTLD_NOW | RTLD_LOCAL);

    template<class Function>
    Function* Find(const char* name) const
    {
        return reinterpret_cast<Function*>(dlsym(name[5] == 'F' ? effects : engine, name));
    }
};

/// Puts an equalizer on the channel, whose bands have all that gain.
void Equalize(const Libraries& libraries, DWORD channel, float gain)
{
    const auto set = libraries.Find<decltype(BASS_FXSetParameters)>("BASS_FXSetParameters");
    const HFX effect = libraries.Find<decltype(BASS_ChannelSetFX)>("BASS_ChannelSetFX")(
        channel, BASS_FX_BFX_PEAKEQ, 0);
    EXPECT_NE(effect, 0u);
    BASS_BFX_PEAKEQ record = {.lBand = 0,
                              .fBandwidth = 2.5f,
                              .fQ = 0,
                              .fCenter = 60,
                              .fGain = gain,
                              .lChannel = BASS_BFX_CHANALL};
    while (record.lBand < 9) {
        EXPECT_TRUE(set(effect, &record)) << record.lBand;
        ++record.lBand;
        record.fCenter *= 2;
    }
}

/// What the engine makes of in.wav, with an equalizer of that gain or without one.
std::string Render(const Libraries& libraries, const TempDir& folder, std::optional<float> gain)
{
    setenv("VELMO_AUDIO", ("wav-fast:" + folder("out.wav")).c_str(), 1);
    setenv("VELMO_WAV_FORMAT", "f32", 1);
    setenv("VELMO_HOME", folder().c_str(), 1);
    EXPECT_TRUE(libraries.Find<decltype(BASS_Init)>("BASS_Init")(-1, 44100, 0, nullptr, nullptr));
    const auto open = libraries.Find<decltype(BASS_StreamCreateFile)>("BASS_StreamCreateFile");
    const auto isActive = libraries.Find<decltype(BASS_ChannelIsActive)>("BASS_ChannelIsActive");
    const HSTREAM channel = open(0, folder("in.wav").c_str(), 0, 0, 0);
    if (gain)
        Equalize(libraries, channel, *gain);
    EXPECT_TRUE(libraries.Find<decltype(BASS_ChannelPlay)>("BASS_ChannelPlay")(channel, 1));
    while (isActive(channel) != BASS_ACTIVE_STOPPED)
        std::this_thread::yield();
    EXPECT_TRUE(libraries.Find<decltype(BASS_Free)>("BASS_Free")());
    constexpr std::size_t Begin = 100; // beyond the header
    constexpr std::size_t Sound = sizeof(float) * 2 * 20000;
    std::string sound = folder.Read("out.wav").substr(Begin, Sound);
    EXPECT_EQ(sound.size(), Sound);
    return sound;
}

/// One case, as its order counts: what was opened stays mapped.
TEST(EffectLibraryTest, OpensOnlyBesideTheEngineAndEqualizesItsChannels)
{
    const auto openAlone = [] {
        std::_Exit(dlopen(BASS_FX_LIBRARY, RTLD_NOW | RTLD_LOCAL) == nullptr ? 0 : 1);
    };
    EXPECT_EXIT(openAlone(), testing::ExitedWithCode(0), "");

    const Libraries libraries;
    ASSERT_NE(libraries.engine, nullptr);
    ASSERT_NE(libraries.effects, nullptr) << dlerror();
    EXPECT_EQ(libraries.Find<decltype(BASS_FX_GetVersion)>("BASS_FX_GetVersion")() >> 16, 516u);

    const TempDir folder;
    folder.Write("in.wav", MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_PCM_16, Noise(44100, 2)));
    const std::string bare = Render(libraries, folder, {});
    EXPECT_EQ(Render(libraries, folder, 0.0f), bare);
    EXPECT_NE(Render(libraries, folder, 3.0f), bare);
}

} // namespace
} // namespace velmo::test
