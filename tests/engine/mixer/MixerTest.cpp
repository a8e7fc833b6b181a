#include "mixer/Mixer.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <vector>

namespace velmo::engine {

namespace {

using Samples = std::vector<float>;

/// A voice with `frames` frames of `value` in its ring.
std::unique_ptr<Voice> MakeVoice(std::size_t frames,
                                 float value,
                                 bool ended,
                                 VoiceSettings settings = {},
                                 std::shared_ptr<Strip> strip = std::make_shared<Strip>(44100))
{
    settings.capacityFrames = frames + 1;
    auto voice = std::make_unique<Voice>(settings, std::move(strip));
    std::span<float> place = voice->ring.WriteSpan(frames);
    std::fill(place.begin(), place.end(), value);
    voice->ring.Commit(frames);
    voice->ended = ended;
    return voice;
}

constexpr VoiceSettings Fading{.fadeFrames = 4};
constexpr VoiceSettings FadingIn{.fadeFrames = 4, .start = Fade::Start::Silent};

/// One side of a fade of 4 frames from silence.
const std::vector<float>& Rise()
{
    static const std::vector<float> Gains = {0.0380602f, 0.3086583f, 0.6913417f, 0.9619398f};
    return Gains;
}

/// Left samples, to five digits.
void ExpectLeft(const Samples& out, const std::vector<float>& left)
{
    ASSERT_EQ(out.size(), left.size() * 2);
    for (std::size_t i = 0; i < left.size(); ++i)
        EXPECT_NEAR(out[2 * i], left[i], 1e-5) << i;
}

/// An effect whose only work is `Change` of a frame's side and the effect's own number.
template<void (*Change)(float& sample, float& state)>
BASS_EFFECT EffectOf()
{
    return {.abi = BASS_EFFECT_ABI,
            .size = sizeof(BASS_EFFECT),
            .type = 1,
            .create = [](std::uint32_t) -> void* { return new float[2]{}; },
            .set = [](void*, const void*) -> int { return BASS_OK; },
            .get = [](void*, void*) -> int { return BASS_OK; },
            .process =
                [](void* effect, float* samples, std::size_t frames) {
                    for (std::size_t i = 0; i < frames * 2; ++i)
                        Change(samples[i], static_cast<float*>(effect)[i % 2]);
                },
            .reset = [](void* effect) { std::fill_n(static_cast<float*>(effect), 2, 0.0f); },
            .destroy = [](void* effect) { delete[] static_cast<float*>(effect); }};
}

const BASS_EFFECT AddEffect = EffectOf<[](float& sample, float&) { sample += 1; }>();
const BASS_EFFECT DoubleEffect = EffectOf<[](float& sample, float&) { sample *= 2; }>();
/// Each frame becomes the sum of all since the last reset.
const BASS_EFFECT SumEffect = EffectOf<[](float& sample, float& sum) { sample = sum += sample; }>();

class MixerTest : public ::testing::Test
{
protected:
    Samples Render(std::size_t frames)
    {
        Samples out(frames * 2, 99.0f);
        m_mixer.Render(out.data(), frames);
        return out;
    }

    static Samples Constant(std::size_t frames, float value)
    {
        Samples samples(frames * 2, value);
        return samples;
    }

    Wake m_wake;
    Mixer m_mixer{MixFormat{}, m_wake};
};

} // namespace

TEST_F(MixerTest, VoicesAddExactlyAndAreNotLimited)
{
    const auto first = MakeVoice(10, 0.75f, false);
    const auto second = MakeVoice(5, 0.5f, true);
    m_mixer.Add(*first);
    m_mixer.Add(*second);
    Samples expected = Constant(5, 1.25f);
    const Samples rest = Constant(3, 0.75f);
    expected.insert(expected.end(), rest.begin(), rest.end());
    EXPECT_EQ(Render(8), expected);
    EXPECT_TRUE(second->finished);
    EXPECT_EQ(second->stage, VoiceStage::Released);
    EXPECT_EQ(second->heard.OutEnd(), 5U);
    EXPECT_EQ(first->stage, VoiceStage::Mixed);
    EXPECT_EQ(m_mixer.FramesRendered(), 8U);
}

TEST_F(MixerTest, WishesHoldFromTheNextBlockOn)
{
    const auto voice = MakeVoice(20, 0.5f, false);
    m_mixer.Add(*voice);
    EXPECT_EQ(Render(4), Constant(4, 0.5f));
    voice->wish = Wish::Pause;
    EXPECT_EQ(Render(4), Constant(4, 0));
    EXPECT_EQ(voice->seenWish, Wish::Pause);
    voice->wish = Wish::Play;
    EXPECT_EQ(Render(4), Constant(4, 0.5f));
    EXPECT_EQ(voice->ring.Fill(), 12U) << "the pause used nothing up";
    voice->wish = Wish::Drop;
    EXPECT_EQ(Render(4), Constant(4, 0));
    EXPECT_EQ(voice->stage, VoiceStage::Released);
    EXPECT_FALSE(voice->finished);
}

TEST_F(MixerTest, DroppedVoicesAreLetGoWithoutABlock)
{
    const auto taken = MakeVoice(20, 0.5f, false);
    m_mixer.Add(*taken);
    Render(1);
    const auto incoming = MakeVoice(20, 0.5f, false);
    m_mixer.Add(*incoming);
    taken->wish = Wish::Drop;
    incoming->wish = Wish::Drop;
    m_mixer.SettleUnheard();
    EXPECT_EQ(taken->stage, VoiceStage::Released);
    EXPECT_EQ(incoming->stage, VoiceStage::Released);
}

TEST_F(MixerTest, VoicesFadeWhereTheirSoundIsCut)
{
    const auto voice = MakeVoice(40, 1.0f, false, Fading);
    m_mixer.Add(*voice);
    EXPECT_EQ(Render(2), Constant(2, 1)) << "the beginning doesn't fade";
    voice->wish = Wish::Pause;
    ExpectLeft(Render(3), {Rise()[3], Rise()[2], Rise()[1]});
    EXPECT_EQ(voice->seenWish, Wish::Play) << "not silent yet";
    EXPECT_EQ(m_mixer.FramesReady(100), 1U) << "the rest of the fade";
    ExpectLeft(Render(3), {Rise()[0], 0, 0});
    EXPECT_EQ(voice->seenWish, Wish::Pause);
    EXPECT_EQ(voice->heard.FramesHeard(100), 6U);
    voice->wish = Wish::Play;
    ExpectLeft(Render(3), {Rise()[0], Rise()[1], Rise()[2]});
    voice->wish = Wish::Drop; // turns around where it is
    ExpectLeft(Render(4), {Rise()[2], Rise()[1], Rise()[0], 0});
    EXPECT_EQ(voice->stage, VoiceStage::Released);
    EXPECT_EQ(voice->heard.FramesHeard(100), 12U);
    EXPECT_EQ(voice->ring.Fill(), 28U);

    // One that was never heard has nothing to fade.
    const auto unheard = MakeVoice(10, 1.0f, false, Fading);
    m_mixer.Add(*unheard);
    unheard->wish = Wish::Pause;
    EXPECT_EQ(Render(2), Constant(2, 0));
    EXPECT_EQ(unheard->seenWish, Wish::Pause);
    unheard->wish = Wish::Play;
    EXPECT_EQ(Render(2), Constant(2, 1));
    // Where sound is lacking the fade ends short, and what comes later isn't part of it.
    const auto starved = MakeVoice(3, 1.0f, false, Fading);
    m_mixer.Add(*starved);
    unheard->wish = Wish::Drop;
    Render(1);
    starved->wish = Wish::Pause;
    Render(4);
    EXPECT_EQ(starved->seenWish, Wish::Pause);
    starved->ring.Commit(1);
    EXPECT_EQ(Render(2), Constant(2, 0));
}

TEST_F(MixerTest, NextVoiceOfAChannelBeginsWhereTheLastIsSilent)
{
    const auto strip = std::make_shared<Strip>(44100);
    strip->effects.Add(SumEffect, 1, 0);
    const auto left = MakeVoice(20, 1.0f, false, Fading, strip);
    const auto sought = MakeVoice(20, 10.0f, true, FadingIn, strip);
    m_mixer.Add(*left);
    EXPECT_EQ(Render(2), (Samples{1, 1, 2, 2}));
    left->wish = Wish::Drop;
    m_mixer.Add(*sought);
    ExpectLeft(Render(3), {3 * Rise()[3], 4 * Rise()[2], 5 * Rise()[1]});
    // The effect gets the rest of the one before it forgets it for the other, in the same block.
    ExpectLeft(
        Render(5),
        {6 * Rise()[0] + 10 * Rise()[0], 20 * Rise()[1], 30 * Rise()[2], 40 * Rise()[3], 50});
    EXPECT_EQ(left->stage, VoiceStage::Released);
    EXPECT_EQ(m_mixer.Underruns(), 0U);
    EXPECT_EQ(strip->clipped, 2 * (1 + 4 + 5U)) << "all but the first sample, before the fades";
}

TEST_F(MixerTest, EffectsComeAndGoWithoutAStepAndInTheirOrder)
{
    const auto strip = std::make_shared<Strip>(44100); // an effect is blended over 441 frames
    const auto voice = MakeVoice(4000, 0.5f, true, {}, strip);
    m_mixer.Add(*voice);
    strip->effects.Add(AddEffect, 1, 0);
    strip->effects.Add(DoubleEffect, 2, 5);
    strip->effects.Add(AddEffect, 3, 5);
    EXPECT_EQ(Render(10), Constant(10, 3)) << "(0.5 x 2 + 1) + 1, from the first frame on";
    EXPECT_TRUE(strip->effects.Remove(1));
    EXPECT_FALSE(strip->effects.Remove(1));
    const auto expectSlope = [this](float from, float to) {
        float last = from;
        for (const std::size_t frames : {100U, 341U}) {
            const Samples out = Render(frames);
            for (const float sample : out) {
                EXPECT_NEAR(sample, last, 0.006) << "a step";
                last = sample;
            }
        }
        EXPECT_NEAR(last, to, 1e-4);
        EXPECT_EQ(Render(10), Constant(10, to));
    };
    expectSlope(3, 2);
    EXPECT_TRUE(strip->effects.Remove(2));
    EXPECT_TRUE(strip->effects.Remove(3));
    strip->effects.Add(AddEffect, 4, 0);
    EXPECT_TRUE(strip->effects.Remove(4)) << "the mixer hasn't seen it";
    expectSlope(2, 0.5f);
    EXPECT_EQ(m_mixer.Clipped(), strip->clipped);
    strip->effects.Tidy();
    EXPECT_FALSE(strip->effects.Update()) << "nothing is left to run";
}

TEST_F(MixerTest, GainChangesWithoutAStep)
{
    m_mixer.Prepare(44100, nullptr); // 20 ms are 882 frames
    const auto voice = MakeVoice(10000, 1.0f, false);
    m_mixer.Add(*voice);
    EXPECT_EQ(Render(100), Constant(100, 1));
    float last = 1;
    float lastStep = 0;
    for (const std::size_t frames : {1U, 100U, 780U, 5U, 2000U}) {
        m_mixer.SetGain(frames < 1000 ? 0.0f : 0.5f); // the last one after the first ramp's end
        const Samples out = Render(frames);
        for (std::size_t i = 0; i < out.size(); i += 2) {
            EXPECT_NEAR(out[i] - last, lastStep, 1e-5) << "a corner";
            lastStep = out[i] - last;
            last = out[i];
        }
        if (frames == 5) {
            EXPECT_LT(last, 1e-4);
        }
    }
    EXPECT_EQ(last, 0.5f);
}

TEST_F(MixerTest, ReadyFramesEndWhereAGapWouldCome)
{
    EXPECT_EQ(m_mixer.FramesReady(100), 0U);
    const auto endedLong = MakeVoice(50, 0.5f, true);
    const auto endedShort = MakeVoice(10, 0.5f, true);
    const auto decoding = MakeVoice(20, 0.5f, false);
    const auto paused = MakeVoice(5, 0.5f, false);
    paused->wish = Wish::Pause;
    for (Voice* voice : {endedLong.get(), endedShort.get(), paused.get()})
        m_mixer.Add(*voice);
    EXPECT_EQ(m_mixer.FramesReady(100), 50U) << "up to the end of the last voice";
    m_mixer.Add(*decoding);
    EXPECT_EQ(m_mixer.FramesReady(100), 20U);
    EXPECT_EQ(m_mixer.FramesReady(8), 8U);
    Render(20);
    EXPECT_EQ(m_mixer.FramesReady(100), 0U);
    EXPECT_FALSE(decoding->starved);
    EXPECT_EQ(m_mixer.Underruns(), 0U);
    Render(1);
    EXPECT_TRUE(decoding->starved);
    EXPECT_EQ(m_mixer.Underruns(), 1U);
}

TEST_F(MixerTest, BlockHasWhatWasCountedWhateverComesInBetween)
{
    const auto voice = MakeVoice(50, 0.5f, false);
    m_mixer.Add(*voice);
    ASSERT_EQ(m_mixer.FramesReady(100), 50U);
    // Another voice with less sound, a pause, and a thread that would take voices away.
    const auto later = MakeVoice(10, 0.25f, false);
    m_mixer.Add(*later);
    voice->wish = Wish::Pause;
    m_mixer.SettleUnheard();
    EXPECT_EQ(Render(50), Constant(50, 0.5f));
    EXPECT_EQ(m_mixer.Underruns(), 0U);
    EXPECT_EQ(m_mixer.FramesReady(100), 10U) << "the reservation is over";
}

TEST(HeardMap, FollowsPausesAndGaps)
{
    HeardMap map;
    EXPECT_EQ(map.FramesHeard(1000), 0U);
    map.Append(100, 50);
    map.Append(150, 50); // goes on
    map.Append(300, 20); // after a pause
    struct Case
    {
        std::uint64_t heardOut;
        std::uint64_t frames;
    };
    for (const Case& c : {
             Case{0,   0  },
             {100, 0  },
             {101, 1  },
             {199, 99 },
             {200, 100},
             {250, 100},
             {300, 100},
             {310, 110},
             {320, 120},
             {900, 120}
    })
        EXPECT_EQ(map.FramesHeard(c.heardOut), c.frames) << c.heardOut;
    EXPECT_EQ(map.OutEnd(), 320U);
    // The oldest stretches are forgotten: what was heard before the kept ones is at least what they
    // begin with.
    for (std::uint64_t i = 0; i < 20; ++i)
        map.Append(1000 + 10 * i, 1);
    EXPECT_EQ(map.FramesHeard(1190), 139U);
    EXPECT_EQ(map.FramesHeard(5000), 140U);
    EXPECT_EQ(map.FramesHeard(0), 132U);
}

TEST(Ring, KeepsOrderAcrossItsEnd)
{
    Ring ring(7);
    float next = 0;
    float expected = 0;
    for (int round = 0; round < 20; ++round) {
        for (std::span<float> place = ring.WriteSpan(5); !place.empty();
             place = ring.WriteSpan(5)) {
            std::iota(place.begin(), place.end(), next);
            next += static_cast<float>(place.size());
            ring.Commit(place.size() / 2);
        }
        EXPECT_EQ(ring.Fill(), 7U);
        for (std::size_t left = 4; left > 0;) {
            const std::span<const float> in = ring.ReadSpan(left);
            for (const float sample : in)
                EXPECT_EQ(sample, expected++);
            ring.Release(in.size() / 2);
            left -= in.size() / 2;
        }
    }
}

TEST(Ring, KeepsThePastForThoseWhoLook)
{
    Ring ring(5, 3);
    float next = 0;
    const auto write = [&](std::size_t frames) {
        for (; frames > 0; --frames) {
            const std::span<float> place = ring.WriteSpan(1);
            std::fill(place.begin(), place.end(), next++);
            ring.Commit(1);
        }
    };
    write(5);
    ring.Release(2);
    EXPECT_EQ(Ring::Peek(ring).Begin(), 0U);
    EXPECT_EQ(Ring::Peek(ring).End(), 2U);
    for (int end = 3; end < 20; ++end) {
        ring.Release(1);
        write(5 - ring.Fill());
        const Ring::Peek peek(ring);
        Samples past(6);
        peek.Copy(peek.End() - 3, past);
        const auto last = static_cast<float>(end - 1);
        EXPECT_EQ(past, (Samples{last - 2, last - 2, last - 1, last - 1, last, last}));
    }
    ring.Release(1);
    {
        const Ring::Peek peek(ring);
        EXPECT_TRUE(ring.WriteSpan(1).empty());
    }
    EXPECT_FALSE(ring.WriteSpan(1).empty());
}

} // namespace velmo::engine
