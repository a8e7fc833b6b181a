#include "RunningPlayer.h"
#include "TestFiles.h"

#include <gmock/gmock.h>
#include <sndfile.h>

namespace velmo::test {
namespace {

constexpr double Whole = 12.5; // seconds of each track

constexpr double Level = 0.2;
/// A neighbour that begins or ends in the middle of a window of the measure spills nearly this much
/// into the level of a tone 200 Hz away: (2 / (2 pi 200 Hz 0.05 s)) times its own, and some of its
/// image.
constexpr double Spill = 0.01;

/// Four tracks of the same length, played down the list with a crossfade of `delay`. (A crossfade
/// walks down in method 4.)
std::vector<Heard> PlayWithDelay(const std::string& delay)
{
    const std::vector<double> pitches = {400, 600, 900, 1350};
    const TempDir directory;
    RunningPlayer running;
    running.player.settings.WriteSetting("DJ", "Method", "4");
    running.player.settings.WriteSetting("DJ", "CrossFade", "True");
    running.player.settings.WriteSetting("DJ", "CrossFadeDelay", delay);
    for (const double hertz : pitches) {
        const Bytes tone = MakeTone(SF_FORMAT_WAV | SF_FORMAT_PCM_16, hertz, Whole);
        running.AddRow(directory.Write(std::to_string(hertz) + ".wav", tone));
    }
    running.player.playlist.pl.Mark(1);
    running.Play();
    std::vector<Heard> heard = running.HeardOf(pitches);
    EXPECT_EQ(heard.size(), pitches.size());
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_EQ(heard[i].tone, i);
        EXPECT_NEAR(heard[i].lowest, Level, Spill) << "no level is ever touched";
        EXPECT_NEAR(heard[i].highest, Level, Spill);
    }
    return heard;
}

TEST(Overlap, ANegativeDelayLetsTwoTracksSoundTogether)
{
    const std::vector<Heard> heard = PlayWithDelay("-5");
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_NEAR(heard[i].seconds, Whole, 0.15) << "each is whole";
        if (i > 0) {
            EXPECT_NEAR(heard[i - 1].End() - heard[i].from, 5.3, 0.8);
        }
    }
}

TEST(Overlap, APositiveDelayCutsAllButTheFirstAndTheLast)
{
    for (const double delay : {5.0, 0.0}) {
        SCOPED_TRACE(delay);
        const std::vector<Heard> heard = PlayWithDelay(std::to_string(delay));
        for (std::size_t i = 0; i < heard.size(); ++i) {
            const bool isWhole = i == 0 || i + 1 == heard.size();
            const double cut = Whole - heard[i].seconds;
            EXPECT_NEAR(cut, isWhole ? 0 : delay + 0.5, isWhole ? 0.15 : 0.6) << i;
            if (i > 0) {
                EXPECT_NEAR(heard[i].from, heard[i - 1].End(), 0.11) << "never two together";
            }
        }
    }
}

} // namespace
} // namespace velmo::test
