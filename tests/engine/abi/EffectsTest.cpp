// Effects on channels: order, life, and that nothing that is switched clicks.

#include "EngineTest.h"
#include "LineEffect.h"

#include "engine/fx/Signals.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace velmo::engine::test {

namespace {

class Effects : public EngineTest
{
protected:
    Effects() { EXPECT_TRUE(BASS_RegisterEffect(&LineTable)); }

    static HFX AddLine(DWORD channel, Line line, int priority = 0)
    {
        const HFX effect = BASS_ChannelSetFX(channel, LineType, priority);
        EXPECT_EQ(Code(BASS_FXSetParameters(effect, &line)), BASS_OK);
        return effect;
    }
};

/// The loudest click in a tone of 997 Hz, in dB of full scale.
double ClickDb(const std::vector<float>& stereo)
{
    return 20 * std::log10(velmo::test::Roughness(stereo, 44100));
}

} // namespace

TEST_F(Effects, AreKnownByTheirHandlesAndEndWithTheirChannel)
{
    Init("null");
    const std::string file = WriteWav("noise.wav", Noise(2UL * 441000));
    const DWORD channel = OpenStream(file);
    EXPECT_EQ(Code(BASS_ChannelSetFX(channel, 0x7002, 0)), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(Code(BASS_RegisterEffect(nullptr)), BASS_ERROR_ILLPARAM);
    BASS_EFFECT newer = LineTable;
    newer.abi = BASS_EFFECT_ABI + 1;
    EXPECT_EQ(Code(BASS_RegisterEffect(&newer)), BASS_ERROR_ILLPARAM);

    const HFX effect = AddLine(channel, {0.5f, 0.25f});
    Line line = {};
    EXPECT_TRUE(BASS_FXGetParameters(effect, &line));
    EXPECT_EQ(line, (Line{0.5f, 0.25f}));
    line[0] = NAN;
    EXPECT_EQ(Code(BASS_FXSetParameters(effect, &line)), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(Code(BASS_FXSetParameters(effect, nullptr)), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(Code(BASS_ChannelPlay(effect, 0)), BASS_ERROR_HANDLE);
    EXPECT_EQ(Code(BASS_ChannelRemoveFX(OpenStream(file), effect)), BASS_ERROR_HANDLE);
    EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitHeard(channel, 1);
    EXPECT_TRUE(BASS_ChannelRemoveFX(channel, effect));
    EXPECT_EQ(Code(BASS_ChannelRemoveFX(channel, effect)), BASS_ERROR_HANDLE);
    EXPECT_EQ(Code(BASS_FXGetParameters(effect, &line)), BASS_ERROR_HANDLE);
    EXPECT_TRUE(Until([=] { // when it has been blended out, any call on the channel frees it
        BASS_ChannelIsActive(channel);
        return lineEffects == 0;
    }));

    const HFX next = AddLine(channel, {1, 0});
    EXPECT_NE(next, effect);
    EXPECT_TRUE(BASS_ChannelSetPosition(channel, 0, BASS_POS_BYTE));
    EXPECT_TRUE(BASS_FXGetParameters(next, &line)) << "it outlives a seek";
    EXPECT_TRUE(BASS_StreamFree(channel));
    EXPECT_EQ(Code(BASS_FXGetParameters(next, &line)), BASS_ERROR_HANDLE);
    EXPECT_TRUE(Until([] { return lineEffects == 0; }));
}

TEST_F(Effects, RunByTheirPriorityAndWhatGetsTooLoudSaturatesAndIsCounted)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 44100);
    InitFast();
    ASSERT_TRUE(BASS_SetVolume(0.5f));
    const DWORD converted = OpenStream(WriteWav("rate.wav", noise, 48000));
    PlayToEnd(converted);
    EXPECT_GT(BASS_ChannelGetClipCount(converted), 100U) << "it overshoots";
    const DWORD floats =
        OpenStream(WriteWav<float>("float.wav", {1, 1.5f, -1.5f, -1, 1.25f, 0.5f}));
    PlayToEnd(floats);
    EXPECT_EQ(BASS_ChannelGetClipCount(floats), 3U);
    EXPECT_EQ(Statistics().clipped, 0U) << "but not at the output";
    EXPECT_EQ(Statistics().underruns, 0U);
    EXPECT_GE(Statistics().rendered, 40516U);
    BASS_Free();

    constexpr float Gain = 3.1622777f; // 10 dB
    InitFast();
    ASSERT_TRUE(BASS_SetVolume(1));
    const DWORD plain = OpenStream(WriteWav("noise.wav", noise));
    PlayToEnd(plain);
    EXPECT_EQ(BASS_ChannelGetClipCount(plain), 0U);
    AddLine(plain, {1, 0.25f});
    AddLine(plain, {2 * Gain, 0}, 3);
    AddLine(plain, {0.5f, 0});
    EXPECT_TRUE(BASS_ChannelRemoveFX(plain, AddLine(plain, {100, 0}, 3)));
    PlayToEnd(plain);
    QWORD beyond = 0;
    std::vector<std::int16_t> expected = noise;
    for (const std::int16_t sample : noise) {
        const float loud = (static_cast<float>(sample) / 32768 * (2 * Gain) + 0.25f) * 0.5f;
        beyond += std::abs(loud) > 1 ? 1U : 0U;
        expected.push_back(
            static_cast<std::int16_t>(std::lrint(std::clamp(loud * 32768, -32768.0f, 32767.0f))));
    }
    EXPECT_EQ(BASS_ChannelGetClipCount(plain), beyond);
    EXPECT_EQ(Statistics().clipped, beyond);
    std::vector<std::int16_t> out = Rendered();
    out.resize(expected.size());
    EXPECT_EQ(out, expected);
    EXPECT_EQ(lineEffects, 0) << "they end with the engine";
}

TEST_F(Effects, NothingThatIsSwitchedClicks)
{
    const std::vector<float> sine = velmo::test::Sine(441000, 0.5, 997, 44100);
    std::vector<float> cut(sine.begin(), sine.begin() + 4410);
    cut.resize(8820);
    EXPECT_GT(ClickDb(cut), -40) << "the measure knows a click";

    const std::string file = WriteWav("sine.wav", sine);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    const auto play = [](DWORD channel) { AwaitHeard(channel, Heard(channel) + 26000); };
    const auto expectBelow = [&](double limit, const char* name, const auto& change) {
        InitPaced();
        const DWORD channel = OpenStream(file);
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        play(channel);
        change(channel);
        if (BASS_ChannelIsActive(channel) == BASS_ACTIVE_PLAYING)
            play(channel);
        EXPECT_LT(ClickDb(Rendered<float>()), limit) << name;
    };
    expectBelow(-80, "volume", [](DWORD) {
        BASS_SetVolume(0.1f);
        BASS_SetVolume(0);
    });
    expectBelow(-60, "pause", [](DWORD channel) {
        BASS_ChannelPause(channel);
        AwaitStandstill(channel);
        BASS_ChannelPlay(channel, 0);
    });
    expectBelow(-60, "stop", [](DWORD channel) {
        BASS_ChannelStop(channel);
        AwaitStandstill(channel);
    });
    expectBelow(-60, "seek", [](DWORD channel) {
        BASS_ChannelSetPosition(channel, 800002, BASS_POS_BYTE);
    });
    expectBelow(-60, "effect", [&](DWORD channel) {
        const HFX effect = AddLine(channel, {-1, 0});
        play(channel);
        EXPECT_TRUE(BASS_ChannelRemoveFX(channel, effect));
    });
}

TEST_F(Effects, ReverbIsAddedToWhatIsSentAndRingsOut)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 8820);
    const std::string file = WriteWav("noise.wav", noise);
    const auto render = [&](float level, DWORD flags) {
        InitFast();
        EXPECT_EQ(BASS_SetEAXParameters(-1, level, 0.5f, -1), 1);
        PlayToEnd(OpenStream(file, flags));
        AwaitStandstill([] { return Statistics().rendered; });
        return Rendered();
    };
    EXPECT_EQ(render(0.5f, 0), noise) << "not sent";
    EXPECT_EQ(render(0, BASS_SAMPLE_3D), noise) << "off";
    const std::vector<std::int16_t> wet = render(0.5f, BASS_SAMPLE_3D);
    EXPECT_NE(std::vector<std::int16_t>(wet.begin(), wet.begin() + 17640), noise);
    EXPECT_GT(wet.size(), noise.size() + 17640) << "the tail";
    EXPECT_LT(wet.size(), noise.size() + 176400) << "0.5 s of it for 60 dB";
    EXPECT_LE(std::abs(wet.back()), 1);
    InitFast();
    PlayToEnd(OpenStream(file, BASS_SAMPLE_3D));
    EXPECT_EQ(Rendered(), noise) << "off again after BASS_Free";
    Init("null");
    EXPECT_EQ(Code(BASS_SetEAXParameters(-2, 1, 1, 1)), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(Code(BASS_SetEAXParameters(26, 1, 1, 1)), BASS_ERROR_ILLPARAM);
    EXPECT_TRUE(BASS_SetEAXParameters(25, NAN, 1e9f, -7));
}

} // namespace velmo::engine::test
