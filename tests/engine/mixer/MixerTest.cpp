#include "mixer/Mixer.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <vector>

namespace velmo::engine {

namespace {

using Samples = std::vector<float>;

/// A voice with `frames` frames of `value` in its ring.
std::unique_ptr<Voice> MakeVoice(std::size_t frames, float value, bool ended)
{
    auto voice = std::make_unique<Voice>(frames + 1);
    std::span<float> place = voice->ring.WriteSpan(frames);
    std::fill(place.begin(), place.end(), value);
    voice->ring.Commit(frames);
    voice->ended = ended;
    return voice;
}

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
    m_mixer.ReleaseDropped();
    EXPECT_EQ(taken->stage, VoiceStage::Released);
    EXPECT_EQ(incoming->stage, VoiceStage::Released);
}

TEST_F(MixerTest, GainChangesWithoutAStep)
{
    const auto voice = MakeVoice(20, 1.0f, false);
    m_mixer.Add(*voice);
    EXPECT_EQ(Render(4), Constant(4, 1));
    m_mixer.SetGain(0);
    EXPECT_EQ(Render(4), (Samples{0.75f, 0.75f, 0.5f, 0.5f, 0.25f, 0.25f, 0, 0}));
    EXPECT_EQ(Render(4), Constant(4, 0));
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
    Render(1);
    EXPECT_TRUE(decoding->starved);
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

} // namespace velmo::engine
