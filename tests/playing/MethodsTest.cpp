#include "RunningPlayer.h"
#include "TestFiles.h"

#include <gmock/gmock.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <deque>

namespace velmo::test {
namespace {

/// Six files of six formats, each of a pitch of its own, and what a list of them sounds like.
class Methods : public ::testing::Test
{
protected:
    Methods()
    {
        const auto write = [this](const char* name, int format, auto... shape) {
            const auto tone = static_cast<std::size_t>(*name - 'a');
            m_directory.Write(name, MakeTone(format, m_pitches[tone], m_seconds[tone], shape...));
        };
        write("a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        write("b.aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 1U, 48000U);
        write("c.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
        write("d.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS);
        write("e.wav", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, 1U, 22050U);
        m_directory.Write("f.mod", MakeToneModule(15)); // 1.8 s
    }

    /// The files heard one after the other, as letters; each must be whole. A file that follows
    /// itself does so without a gap.
    std::string Letters(RunningPlayer& running) const
    {
        std::string letters;
        double end = 0;
        for (const Heard& heard : running.HeardOf(m_pitches)) {
            const double whole = m_seconds[heard.tone];
            const double times = std::max(std::round(heard.seconds / whole), 1.0);
            letters +=
                std::string(static_cast<std::size_t>(times), static_cast<char>('a' + heard.tone));
            EXPECT_NEAR(heard.seconds, times * whole, 0.15) << letters;
            EXPECT_NEAR(heard.from, end, 0.15) << letters;
            end = heard.from + heard.seconds;
        }
        return letters;
    }

    const std::vector<double> m_pitches = {400, 600, 900, 1350, 2000, ModulePitch};
    const std::vector<double> m_seconds = {1.5, 2.2, 1.8, 2.4, 2.0, 1.8};
    TempDir m_directory;
};

TEST_F(Methods, EachPlaysItsFilesWholeAndInItsOrder)
{
    struct Case
    {
        const char* method;
        std::size_t row;           ///< that Play starts with
        std::deque<float> numbers; ///< drawn; times 6 rounded is the row
        std::size_t starts;        ///< with so many the user changes to manual; 0 for never
        const char* heard;
        std::size_t rowsAfter;
    };
    // In method 6 rows move up: of a, c, e and f the second is c. The last draw is the pick 0.
    const Case cases[] = {
        {"1", 2, {},                                        0, "b",      6},
        {"2", 4, {},                                        3, "ddd",    6},
        {"3", 1, {},                                        0, "abcdef", 6},
        {"4", 6, {},                                        0, "fedcba", 6},
        {"5", 1, {0.9F, 0.5F, 0.6F, 1 / 3.0F, 0.99F, 0.0F}, 0, "aecdbf", 6},
        {"6", 1, {1 / 3.0F, 0.6F, 0.5F, 0.0F},              0, "abdc",   3},
        {"7", 3, {},                                        3, "ccc",    6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string("method ") + c.method);
        RunningPlayer running;
        FakePlayer& player = running.player;
        for (const char* name : {"a.wav", "b.aif", "c.mp3", "d.ogg", "e.wav", "f.mod"})
            running.AddRow(m_directory(name));
        player.settings.WriteSetting("DJ", "Method", c.method);
        player.playlist.pl.Mark(c.row);
        player.random.numbers = c.numbers;
        running.Play([&] {
            if (running.Starts() == c.starts)
                player.settings.WriteSetting("DJ", "Method", "1");
        });
        EXPECT_EQ(Letters(running), c.heard);
        EXPECT_EQ(player.playlist.pl.Count(), c.rowsAfter);
    }
}

} // namespace
} // namespace velmo::test
