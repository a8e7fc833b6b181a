#include "RunningPlayer.h"
#include "ToneFiles.h"

#include <gmock/gmock.h>
#include <sndfile.h>

namespace velmo::test {
namespace {

constexpr double Whole = 12.5; // seconds of each track

/// Four tracks of the same length, played down the list with a crossfade of `delay`. (A crossfade
/// walks down in method 4.)
std::vector<Heard> PlayWithDelay(const char* delay)
{
    const std::vector<double> pitches = {400, 600, 900, 1350};
    const TempDir directory;
    RunningPlayer running;
    running.player.settings.WriteSetting("DJ", "Method", "4");
    running.player.settings.WriteSetting("DJ", "CrossFade", "True");
    running.player.settings.WriteSetting("DJ", "CrossFadeDelay", delay);
    for (const double hertz : pitches) {
        const std::string path = directory(std::to_string(hertz) + ".wav");
        WriteTone(
            path, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 2, {.hertz = hertz, .seconds = Whole});
        running.AddRow(path);
    }
    running.player.playlist.pl.Mark(1);
    running.Play();
    std::vector<Heard> heard = running.HeardOf(pitches);
    EXPECT_EQ(heard.size(), pitches.size());
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_EQ(heard[i].tone, i);
        EXPECT_NEAR(heard[i].lowest, 0.2, 0.004) << "no level is ever touched";
        EXPECT_NEAR(heard[i].highest, 0.2, 0.004);
    }
    return heard;
}

TEST(Overlap, ANegativeDelayLetsTwoTracksSoundTogether)
{
    const std::vector<Heard> heard = PlayWithDelay("-5");
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_NEAR(heard[i].seconds, Whole, 0.15) << "each is whole";
        if (i > 0) {
            const double overlap = heard[i - 1].from + heard[i - 1].seconds - heard[i].from;
            EXPECT_GT(overlap, 4.5);
            EXPECT_LT(overlap, 6.1);
        }
    }
}

TEST(Overlap, APositiveDelayCutsAllButTheFirstAndTheLast)
{
    const struct
    {
        const char* delay;
        double atLeast; ///< cut from the second track on, seconds
        double atMost;
    } cases[] = {
        {"5", 5, 6},
        {"0", 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.delay);
        const std::vector<Heard> heard = PlayWithDelay(c.delay);
        for (std::size_t i = 0; i < heard.size(); ++i) {
            const double cut = Whole - heard[i].seconds;
            const bool isWhole = i == 0 || i + 1 == heard.size();
            EXPECT_GT(cut, isWhole ? -0.15 : c.atLeast - 0.1) << i;
            EXPECT_LT(cut, isWhole ? 0.15 : c.atMost + 0.1) << i;
            if (i > 0) {
                EXPECT_NEAR(heard[i].from, heard[i - 1].from + heard[i - 1].seconds, 0.11)
                    << "never two together";
            }
        }
    }
}

} // namespace
} // namespace velmo::test
