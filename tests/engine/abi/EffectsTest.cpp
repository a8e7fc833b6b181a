// Effects on channels: order, life, and that nothing that is switched clicks.

#include "EngineTest.h"
#include "LineEffect.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <numbers>

namespace velmo::engine::test {

namespace {

class Effects : public EngineTest
{
protected:
    Effects() { EXPECT_TRUE(BASS_RegisterEffect(&LineTable())); }

    /// As `WriteWav`, of two channels.
    std::string WriteFloatWav(const std::string& name, const std::vector<float>& samples) const
    {
        std::vector<std::int16_t> halves(samples.size() * 2);
        std::memcpy(halves.data(), samples.data(), samples.size() * sizeof(float));
        std::string path = WriteWav(name, halves);
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(20).put(3);  // the kind of sample
        file.seekp(32).put(8);  // bytes a frame
        file.seekp(34).put(32); // bits a sample
        return path;
    }

    static HFX AddLine(DWORD channel, Line line, int priority = 0)
    {
        const HFX effect = BASS_ChannelSetFX(channel, LineType, priority);
        EXPECT_NE(effect, 0U);
        EXPECT_TRUE(BASS_FXSetParameters(effect, &line));
        return effect;
    }
};

std::vector<std::int16_t> Sine(std::size_t frames, double frequency, double amplitude)
{
    std::vector<std::int16_t> sine;
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / 44100;
        sine.push_back(static_cast<std::int16_t>(std::lround(amplitude * 32768 * std::sin(phase))));
    }
    return sine;
}

/// The loudest sample of the left side's part above 5 kHz, in dB of full scale. A tone far below
/// and its slow changes have nothing there, a step has nearly all of its height.
double LoudestClick(const std::vector<float>& stereo)
{
    constexpr int Reach = 128;
    std::vector<double> lowPass;
    double sum = 0;
    for (int i = -Reach; i <= Reach; ++i) {
        const double x = std::numbers::pi * i;
        const double sinc = i == 0 ? 1 : std::sin(x * 10000 / 44100) / (x * 10000 / 44100);
        const double window = 0.42 + 0.5 * std::cos(x / (Reach + 1)) // Blackman's
                              + 0.08 * std::cos(2 * x / (Reach + 1));
        lowPass.push_back(sinc * window);
        sum += lowPass.back();
    }
    double loudest = 1e-9;
    for (std::size_t at = Reach; at + Reach < stereo.size() / 2; ++at) {
        double low = 0;
        for (std::size_t i = 0; i < lowPass.size(); ++i)
            low += lowPass[i] * stereo[2 * (at - Reach + i)];
        loudest = std::max(loudest, std::abs(stereo[2 * at] - low / sum));
    }
    return 20 * std::log10(loudest);
}

} // namespace

TEST_F(Effects, RunInTheOrderOfPriorityThenOfComing)
{
    const std::string file = WriteWav("pair.wav", {8192, -4096, 1024, 0});
    SetVariable("VELMO_WAV_FORMAT", "f32");
    InitFast();
    const DWORD channel = OpenStream(file);
    AddLine(channel, {1, 0.5f}, 0);
    const HFX removed = AddLine(channel, {100, 0}, 3);
    AddLine(channel, {2, 0}, 5);
    AddLine(channel, {0.25f, 0}, 0);
    AddLine(channel, {1, 1}, 5);
    EXPECT_TRUE(BASS_ChannelRemoveFX(channel, removed));
    PlayToEnd(channel);
    EXPECT_EQ(BASS_ChannelGetClipCount(channel), 0U) << "0.5 x 1/4 and less";
    std::vector<float> expected;
    for (const float sample : {0.25f, -0.125f, 0.03125f, 0.0f})
        expected.push_back((sample * 2 + 1 + 0.5f) * 0.25f);
    EXPECT_EQ(RenderedFloats(), expected);
    EXPECT_EQ(LineEffects(), 0) << "they end with the engine";
}

TEST_F(Effects, AreKnownByTheirHandlesAndEndWithTheirChannel)
{
    Init("null");
    const std::string file = WriteWav("noise.wav", Noise(2UL * 44100));
    const DWORD channel = OpenStream(file);
    const DWORD other = OpenStream(file);
    const auto refused = [](bool failed, int code) {
        return failed && BASS_ErrorGetCode() == code;
    };
    EXPECT_TRUE(refused(BASS_ChannelSetFX(0, LineType, 0) == 0, BASS_ERROR_HANDLE));
    EXPECT_TRUE(refused(BASS_ChannelSetFX(channel, 0x7002, 0) == 0, BASS_ERROR_ILLPARAM));
    EXPECT_TRUE(refused(BASS_RegisterEffect(nullptr) == 0, BASS_ERROR_ILLPARAM));
    BASS_EFFECT newer = LineTable();
    newer.abi = BASS_EFFECT_ABI + 1;
    EXPECT_TRUE(refused(BASS_RegisterEffect(&newer) == 0, BASS_ERROR_ILLPARAM));

    const HFX effect = AddLine(channel, {0.5f, 0.25f});
    Line line = {};
    EXPECT_TRUE(BASS_FXGetParameters(effect, &line));
    EXPECT_EQ(line, (Line{0.5f, 0.25f}));
    line[0] = NAN;
    EXPECT_TRUE(refused(!BASS_FXSetParameters(effect, &line), BASS_ERROR_ILLPARAM));
    EXPECT_TRUE(refused(!BASS_FXSetParameters(effect, nullptr), BASS_ERROR_ILLPARAM));
    EXPECT_TRUE(refused(!BASS_FXGetParameters(effect, nullptr), BASS_ERROR_ILLPARAM));
    EXPECT_TRUE(refused(!BASS_FXSetParameters(channel, &line), BASS_ERROR_HANDLE));
    EXPECT_TRUE(refused(!BASS_ChannelPlay(effect, 0), BASS_ERROR_HANDLE));
    EXPECT_TRUE(refused(!BASS_ChannelRemoveFX(other, effect), BASS_ERROR_HANDLE));
    EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) > 0; }));
    EXPECT_TRUE(BASS_ChannelRemoveFX(channel, effect));
    EXPECT_TRUE(refused(!BASS_ChannelRemoveFX(channel, effect), BASS_ERROR_HANDLE));
    EXPECT_TRUE(refused(!BASS_FXGetParameters(effect, &line), BASS_ERROR_HANDLE));
    EXPECT_TRUE(Until([=] { // when it has been blended out, any call on the channel frees it
        BASS_ChannelIsActive(channel);
        return LineEffects() == 0;
    }));

    const HFX next = AddLine(channel, {1, 0});
    EXPECT_NE(next, effect);
    EXPECT_TRUE(BASS_ChannelSetPosition(channel, 0, BASS_POS_BYTE));
    EXPECT_TRUE(BASS_FXGetParameters(next, &line)) << "it outlives a seek";
    EXPECT_TRUE(BASS_StreamFree(channel));
    EXPECT_TRUE(refused(!BASS_FXGetParameters(next, &line), BASS_ERROR_HANDLE));
    EXPECT_TRUE(Until([] { return LineEffects() == 0; }));
    EXPECT_TRUE(refused(BASS_ChannelGetClipCount(channel) == ~QWORD{0}, BASS_ERROR_HANDLE));
    BASS_Free();
    EXPECT_TRUE(refused(!BASS_FXGetParameters(next, &line), BASS_ERROR_INIT));
}

TEST_F(Effects, SoundThatGetsTooLoudSaturatesAndIsCounted)
{
    constexpr float Gain = 3.1622777f; // 10 dB
    const std::vector<std::int16_t> noise = Noise(2UL * 44100);
    BASS_STATISTICS counts = {};
    InitFast();
    ASSERT_TRUE(BASS_SetVolume(0.5f));
    const DWORD converted = OpenStream(WriteWav("rate.wav", noise, 48000));
    PlayToEnd(converted);
    EXPECT_GT(BASS_ChannelGetClipCount(converted), 100U) << "it overshoots";
    const DWORD floats = OpenStream(WriteFloatWav("float.wav", {1, 1.5f, -1.5f, -1, 1.25f, 0.5f}));
    PlayToEnd(floats);
    EXPECT_EQ(BASS_ChannelGetClipCount(floats), 3U);
    ASSERT_TRUE(BASS_GetStatistics(&counts));
    EXPECT_EQ(counts.clipped, 0U) << "but not at the output";
    EXPECT_EQ(counts.underruns, 0U);
    EXPECT_GE(counts.rendered, 40516U);
    BASS_Free();

    InitFast();
    ASSERT_TRUE(BASS_SetVolume(1));
    const DWORD plain = OpenStream(WriteWav("noise.wav", noise));
    PlayToEnd(plain);
    EXPECT_EQ(BASS_ChannelGetClipCount(plain), 0U);
    AddLine(plain, {Gain, 0});
    PlayToEnd(plain);
    ASSERT_TRUE(BASS_GetStatistics(&counts));
    QWORD beyond = 0;
    std::vector<std::int16_t> expected = noise;
    for (const std::int16_t sample : noise) {
        const float loud = static_cast<float>(sample) / 32768 * Gain;
        beyond += std::abs(loud) > 1 ? 1U : 0U;
        expected.push_back(
            static_cast<std::int16_t>(std::lrint(std::clamp(loud * 32768, -32768.0f, 32767.0f))));
    }
    EXPECT_EQ(BASS_ChannelGetClipCount(plain), beyond);
    EXPECT_EQ(counts.clipped, beyond);
    std::vector<std::int16_t> out = Rendered();
    out.resize(expected.size());
    EXPECT_EQ(out, expected);
}

TEST_F(Effects, NothingThatIsSwitchedClicks)
{
    std::vector<float> cut(2UL * 8820);
    const std::vector<std::int16_t> sine = Sine(4410, 997, 0.5);
    for (std::size_t i = 0; i < sine.size(); ++i)
        cut[2 * (i + 2205)] = static_cast<float>(sine[i]) / 32768;
    EXPECT_GT(LoudestClick(cut), -40) << "the measure knows a click";

    const std::string file = WriteWav("sine.wav", Sine(441000, 997, 0.5), 44100, 1);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    const auto play = [](DWORD channel, QWORD bytes) {
        const QWORD end = BASS_ChannelGetPosition(channel, BASS_POS_BYTE) + bytes;
        EXPECT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) >= end; }));
    };
    const auto expectBelow = [&](double limit, const char* name, const auto& change) {
        Init("wav:" + File("out.wav").string());
        const DWORD channel = OpenStream(file);
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        play(channel, 13000);
        change(channel);
        if (BASS_ChannelIsActive(channel) == BASS_ACTIVE_PLAYING)
            play(channel, 13000);
        EXPECT_LT(LoudestClick(RenderedFloats()), limit) << name;
    };
    expectBelow(-80, "nothing", [](DWORD) {});
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
        BASS_ChannelSetPosition(channel, 400001, BASS_POS_BYTE);
    });
    expectBelow(-60, "effect", [&](DWORD channel) {
        const HFX effect = AddLine(channel, {-1, 0});
        play(channel, 13000);
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
        const auto frames = [] {
            BASS_STATISTICS now = {};
            EXPECT_TRUE(BASS_GetStatistics(&now));
            return now.rendered;
        };
        EXPECT_TRUE(Until([&] {
            const QWORD before = frames();
            return !Until([&] { return frames() != before; }, std::chrono::milliseconds(300));
        })) << "the output never rests";
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
    for (const int room : {-2, 26}) {
        EXPECT_FALSE(BASS_SetEAXParameters(room, 1, 1, 1));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    }
    EXPECT_TRUE(BASS_SetEAXParameters(25, NAN, 1e9f, -7));
}

} // namespace velmo::engine::test
