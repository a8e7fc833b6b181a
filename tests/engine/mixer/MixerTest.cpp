#include "mixer/Mixer.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <vector>

namespace velmo::engine {

namespace {

using Samples = std::vector<float>;
using Sides = SpeakerRoute::Sides;

std::shared_ptr<Strip> StripTo(SpeakerRoute route = {})
{
    return std::make_shared<Strip>(44100, false, route);
}

/// What such a voice sounds like.
Samples Frames(std::size_t frames, float left)
{
    Samples samples;
    for (; frames > 0; --frames)
        samples.insert(samples.end(), {left, left / 2});
    return samples;
}

constexpr VoiceSettings Fading{.fadeFrames = 4};
constexpr VoiceSettings FadingIn{.fadeFrames = 4, .start = Fade::Start::Silent};
/// A fade of 4 frames from silence.
constexpr float Rise[] = {0.0380602f, 0.3086583f, 0.6913417f, 0.9619398f};

/// Left samples, to five digits.
void ExpectLeft(const Samples& out, const Samples& left)
{
    ASSERT_EQ(out.size(), left.size() * 2);
    for (std::size_t i = 0; i < left.size(); ++i)
        EXPECT_NEAR(out[2 * i], left[i], 1e-5) << i;
}

/// Each frame becomes the sum of all since the last reset.
const BASS_EFFECT SumEffect = {
    .abi = BASS_EFFECT_ABI,
    .size = sizeof(BASS_EFFECT),
    .type = 1,
    .create = [](std::uint32_t) -> void* { return new float[2]{}; },
    .set = [](void*, const void*) -> int { return BASS_OK; },
    .get = [](void*, void*) -> int { return BASS_OK; },
    .process =
        [](void* effect, float* samples, std::size_t frames) {
            auto* const sums = static_cast<float*>(effect);
            for (std::size_t i = 0; i < frames * 2; ++i)
                samples[i] = sums[i % 2] += samples[i];
        },
    .reset = [](void* effect) { std::fill_n(static_cast<float*>(effect), 2, 0.0f); },
    .destroy = [](void* effect) { delete[] static_cast<float*>(effect); }};

class MixerTest : public ::testing::Test
{
protected:
    Samples Render(std::size_t frames, std::size_t channels = 2)
    {
        Samples out(frames * channels, 99.0f);
        m_mixer.Render(out.data(), frames);
        return out;
    }

    /// Adds a voice with `frames` frames in its ring: `left`, and half of it right.
    std::unique_ptr<Voice> Add(std::size_t frames,
                               float left,
                               bool ended,
                               VoiceSettings settings = {},
                               std::shared_ptr<Strip> strip = StripTo())
    {
        settings.capacityFrames = frames + 1;
        auto voice = std::make_unique<Voice>(settings, std::move(strip));
        const std::span<float> place = voice->ring.WriteSpan(frames);
        for (std::size_t i = 0; i < place.size(); ++i)
            place[i] = i % 2 == 0 ? left : left / 2;
        voice->ring.Commit(frames);
        voice->ended = ended;
        m_mixer.Add(*voice);
        return voice;
    }

    Wake m_wake;
    Mixer m_mixer{MixFormat{}, m_wake};
};

} // namespace

TEST_F(MixerTest, EachPairOfSpeakersIsASumOfItsOwnUnderOneGain)
{
    constexpr std::size_t Length = 9000; // more than is mixed at once
    m_mixer.Prepare(44100, nullptr);
    m_mixer.PrepareSpeakers(6);
    const auto front = Add(Length, 0.5f, true);
    const auto alsoFront = Add(5000, 0.5f, true, {}, StripTo({.pair = 0, .sides = Sides::Right}));
    const auto rearLeft = Add(Length, 0.5f, true, {}, StripTo({.pair = 2, .sides = Sides::Left}));
    const auto centre = Add(100, 0.5f, true, {}, StripTo({.pair = 1, .sides = Sides::Left}));
    m_mixer.SetGain(2);
    Samples expected;
    for (std::size_t i = 0; i < Length; ++i)
        expected.insert(expected.end(),
                        {1, i < 5000 ? 1.25f : 0.5f, i < 100 ? 0.75f : 0.0f, 0, 0.75f, 0});
    EXPECT_TRUE(Render(Length, 6) == expected);
    EXPECT_EQ(m_mixer.Clipped(), 5000U) << "counted, not limited";
    EXPECT_EQ(front->stage, VoiceStage::Released);
    EXPECT_EQ(centre->heard.OutEnd(), 100U);
    EXPECT_TRUE(Render(Length, 6) == Samples(Length * 6, 0.0f));
}

TEST_F(MixerTest, VoicesFadeWhereTheirSoundIsCut)
{
    const auto voice = Add(40, 1.0f, false, Fading);
    EXPECT_EQ(Render(2), Frames(2, 1)) << "the beginning doesn't fade";
    voice->wish = Wish::Pause;
    ExpectLeft(Render(3), {Rise[3], Rise[2], Rise[1]});
    EXPECT_EQ(voice->seenWish, Wish::Play) << "not silent yet";
    EXPECT_EQ(m_mixer.FramesReady(100), 1U) << "the rest of the fade";
    ExpectLeft(Render(3), {Rise[0], 0, 0});
    EXPECT_EQ(voice->seenWish, Wish::Pause);
    EXPECT_EQ(voice->heard.FramesHeard(100), 6U);
    voice->wish = Wish::Play;
    ExpectLeft(Render(3), {Rise[0], Rise[1], Rise[2]});
    voice->wish = Wish::Drop; // turns around where it is
    ExpectLeft(Render(4), {Rise[2], Rise[1], Rise[0], 0});
    EXPECT_EQ(voice->stage, VoiceStage::Released);
    EXPECT_FALSE(voice->finished);
    EXPECT_EQ(voice->heard.FramesHeard(100), 12U);
    EXPECT_EQ(voice->ring.Fill(), 28U);

    // One that was never heard has nothing to fade.
    const auto unheard = Add(10, 1.0f, false, Fading);
    unheard->wish = Wish::Pause;
    EXPECT_EQ(Render(2), Frames(2, 0));
    EXPECT_EQ(unheard->seenWish, Wish::Pause);
    unheard->wish = Wish::Play;
    EXPECT_EQ(Render(2), Frames(2, 1));
    // Where sound is lacking the fade ends short, and what comes later isn't part of it.
    const auto starved = Add(3, 1.0f, false, Fading);
    unheard->wish = Wish::Drop;
    Render(1);
    starved->wish = Wish::Pause;
    Render(4);
    EXPECT_EQ(starved->seenWish, Wish::Pause);
    starved->ring.Commit(1);
    EXPECT_EQ(Render(2), Frames(2, 0));
}

TEST_F(MixerTest, NextVoiceOfAChannelBeginsWhereTheLastIsSilent)
{
    const auto strip = StripTo();
    strip->effects.Add(SumEffect, 1, 0);
    const auto left = Add(20, 1.0f, false, Fading, strip);
    EXPECT_EQ(Render(2), (Samples{1, 0.5f, 2, 1}));
    left->wish = Wish::Drop;
    const auto sought = Add(20, 10.0f, true, FadingIn, strip);
    ExpectLeft(Render(3), {3 * Rise[3], 4 * Rise[2], 5 * Rise[1]});
    // The effect gets the rest of the one before it forgets it for the other, in the same block.
    ExpectLeft(Render(5),
               {6 * Rise[0] + 10 * Rise[0], 20 * Rise[1], 30 * Rise[2], 40 * Rise[3], 50});
    EXPECT_EQ(left->stage, VoiceStage::Released);
    EXPECT_EQ(m_mixer.Underruns(), 0U);
    EXPECT_EQ(strip->clipped, 10U + 9) << "left and right, before the fades";
}

TEST_F(MixerTest, GainChangesWithoutAStepOnAllPairs)
{
    m_mixer.Prepare(44100, nullptr); // 20 ms are 882 frames
    m_mixer.PrepareSpeakers(6);
    const auto front = Add(10000, 1.0f, false);
    const auto rear = Add(10000, 1.0f, false, {}, StripTo({.pair = 2}));
    Render(100, 6);
    float last = 1;
    float lastStep = 0;
    for (const std::size_t frames : {1U, 100U, 780U, 5U, 2000U}) {
        m_mixer.SetGain(frames < 200 ? 0.0f : 0.5f); // the second before the first is reached
        const Samples out = Render(frames, 6);
        for (std::size_t i = 0; i < out.size(); i += 6) {
            EXPECT_NEAR(out[i] - last, lastStep, 1e-5) << "a corner";
            EXPECT_EQ(out[i + 4], out[i]);
            lastStep = out[i] - last;
            last = out[i];
        }
        EXPECT_TRUE(frames != 5 || last < 1e-4);
    }
    EXPECT_EQ(last, 0.5f);
}

TEST_F(MixerTest, ReadyFramesEndWhereAGapWouldCome)
{
    EXPECT_EQ(m_mixer.FramesReady(100), 0U);
    const auto endedLong = Add(50, 0.5f, true);
    const auto endedShort = Add(10, 0.5f, true);
    const auto paused = Add(5, 0.5f, false);
    paused->wish = Wish::Pause;
    EXPECT_EQ(m_mixer.FramesReady(100), 50U) << "up to the end of the last voice";
    const auto decoding = Add(20, 0.5f, false);
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
    const auto voice = Add(50, 0.5f, false);
    ASSERT_EQ(m_mixer.FramesReady(100), 50U);
    // Another voice with less sound, a pause, and a thread that would take voices away.
    const auto later = Add(10, 0.25f, false);
    voice->wish = Wish::Pause;
    m_mixer.SettleUnheard();
    EXPECT_EQ(Render(50), Frames(50, 0.5f));
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
    constexpr std::uint64_t HeardOf[][2] = {
        {101, 1  },
        {250, 100},
        {310, 110},
        {900, 120}
    };
    for (const auto& [out, frames] : HeardOf)
        EXPECT_EQ(map.FramesHeard(out), frames) << out;
    EXPECT_EQ(map.OutEnd(), 320U);
    // The oldest stretches are forgotten: what was heard before the kept ones is at least what they
    // begin with.
    for (std::uint64_t i = 0; i < 20; ++i)
        map.Append(1000 + 10 * i, 1);
    EXPECT_EQ(map.FramesHeard(1190), 139U);
    EXPECT_EQ(map.FramesHeard(5000), 140U);
    EXPECT_EQ(map.FramesHeard(0), 132U);
}

TEST(Ring, KeepsOrderAcrossItsEndAndThePastForThoseWhoLook)
{
    Ring ring(7, 3);
    float next = 0;
    float expected = 0;
    for (std::size_t end = 4; end < 80; end += 4) {
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
        const Ring::Peek peek(ring);
        EXPECT_TRUE(ring.WriteSpan(1).empty()) << "somebody looks";
        EXPECT_EQ(peek.End(), end);
        EXPECT_EQ(peek.Begin(), end - 3);
        Samples past(6);
        peek.Copy(peek.Begin(), past);
        Samples last(6);
        std::iota(last.begin(), last.end(), expected - 6);
        EXPECT_EQ(past, last);
    }
}

} // namespace velmo::engine
