// What the mixer costs: mixer_speed

#include "Measure.h"

#include "mixer/Mixer.h"

#include <memory>
#include <vector>

namespace velmo::bench {

namespace {

using engine::Mixer;
using engine::Reverb;
using engine::Strip;
using engine::Voice;

constexpr std::uint32_t Rate = 44100;
constexpr std::size_t BlockFrames = 441;
constexpr int Blocks = 2000;

/// Seconds in which a channel that is sent to the reverb is mixed, block by block. The voice is
/// fed with the same frames all the time.
double MixSeconds(Reverb* reverb)
{
    engine::Wake wake;
    Mixer mixer({}, wake);
    mixer.Prepare(Rate, reverb);
    Voice voice({.capacityFrames = 2 * BlockFrames, .historyFrames = Rate},
                std::make_shared<Strip>(Rate, true));
    std::vector<float> out(BlockFrames * 2);
    const auto feed = [&] {
        for (std::size_t left = BlockFrames; left > 0;) {
            const std::size_t frames = voice.ring.WriteSpan(left).size() / 2;
            voice.ring.Commit(frames);
            left -= frames;
        }
    };
    feed();
    mixer.Add(voice);
    return Seconds([&] {
        for (int block = 0; block < Blocks; ++block) {
            feed();
            mixer.Render(out.data(), BlockFrames);
        }
    });
}

void MeasureReverbOff()
{
    Reverb reverb(Rate);
    const Pair pair = InTurns(
        101, [&] { return MixSeconds(&reverb); }, [] { return MixSeconds(nullptr); });
    const double ratio = pair.ours / pair.yardstick;
    Row("mixing with the reverb off, against a mixer without one",
        Text("%.3f of its time", ratio),
        "1.01",
        ratio <= 1.01);
}

} // namespace

} // namespace velmo::bench

int main()
{
    velmo::bench::MeasureReverbOff();
    return 0;
}
