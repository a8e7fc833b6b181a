#include "mixer/Mixer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace velmo::engine {

namespace {

using Samples = std::vector<float>;
using Sides = SpeakerRoute::Sides;

/// A voice that has `frames` frames of 0.5 left and 0.25 right to give.
std::unique_ptr<Voice> MakeVoice(std::size_t frames, SpeakerRoute route = {})
{
    auto voice = std::make_unique<Voice>(VoiceSettings{.capacityFrames = frames + 1},
                                         std::make_shared<Strip>(44100, false, route));
    const std::span<float> place = voice->ring.WriteSpan(frames);
    for (std::size_t i = 0; i < place.size(); ++i)
        place[i] = i % 2 == 0 ? 0.5f : 0.25f;
    voice->ring.Commit(place.size() / 2);
    voice->ended = true;
    return voice;
}

/// All frames of `out` from `first` to before `last` are `frame`.
void ExpectFrames(const Samples& out, std::size_t first, std::size_t last, const Samples& frame)
{
    for (std::size_t i = first * frame.size(); i < last * frame.size(); ++i)
        ASSERT_EQ(out[i], frame[i % frame.size()]) << "sample " << i;
}

} // namespace

TEST(Speakers, EachPairIsASumOfItsOwnUnderOneGain)
{
    constexpr std::size_t Frames = 9000; // more than is mixed at once
    Wake wake;
    Mixer mixer(MixFormat{}, wake);
    mixer.Prepare(44100, nullptr);
    mixer.PrepareSpeakers(6);
    const auto front = MakeVoice(Frames);
    const auto alsoFront = MakeVoice(5000, {.pair = 0, .sides = Sides::Right});
    const auto rearLeft = MakeVoice(Frames, {.pair = 2, .sides = Sides::Left});
    const auto centre = MakeVoice(100, {.pair = 1, .sides = Sides::Left});
    for (Voice* voice : {front.get(), alsoFront.get(), rearLeft.get(), centre.get()})
        mixer.Add(*voice);
    Samples out(Frames * 6, 99.0f);
    mixer.SetGain(2);
    mixer.Render(out.data(), Frames);
    ExpectFrames(out, 0, 100, {1, 1.25f, 0.75f, 0, 0.75f, 0});
    ExpectFrames(out, 100, 5000, {1, 1.25f, 0, 0, 0.75f, 0});
    ExpectFrames(out, 5000, Frames, {1, 0.5f, 0, 0, 0.75f, 0});
    EXPECT_EQ(mixer.Clipped(), 5000U);
    mixer.Render(out.data(), Frames);
    ExpectFrames(out, 0, Frames, Samples(6, 0.0f));
}

} // namespace velmo::engine
