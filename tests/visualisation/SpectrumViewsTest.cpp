#include "visualisation/SpectrumViews.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace velmo {
namespace {

constexpr std::int32_t Width = 100;
constexpr std::int32_t Height = 28;

/// One character for an entry: 1 to 9, then letters from 10 on; what has a name of its own by that.
char Sign(int entry)
{
    switch (entry) {
    case 0: return '.';
    case 127: return 'R';
    case 128: return '-';
    case 138: return 'm';
    case 255: return 'W';
    default: return static_cast<char>(entry < 10 ? '0' + entry : 'a' + entry - 10);
    }
}

/// The shown rows as text, the top row first.
std::string Picture(SpectrumBuffer& buffer)
{
    std::string text;
    for (std::int32_t row = Height - 1; row >= 0; --row) {
        for (std::int32_t column = 0; column < Width; ++column)
            text += Sign(buffer.At(column, row));
        text += '\n';
    }
    return text;
}

/// The lowest rows as drawn, each filled up to its length; rows above them are empty.
std::string Expected(const std::vector<std::string>& rows)
{
    std::string text;
    for (std::size_t row = 0; row < Height - rows.size(); ++row)
        text += std::string(Width, '.') + '\n';
    for (const std::string& row : rows)
        text += row + std::string(Width - row.size(), '.') + '\n';
    return text;
}

/// 1025 values: silence but for what a test sets.
class Views : public ::testing::Test
{
protected:
    std::vector<float> m_spectrum = std::vector<float>(1025);
    SpectrumBuffer m_buffer{Width, Height};

    /// The value of which view 0 makes a column that high.
    static float Fine(int height) { return std::pow((static_cast<float>(height) + 4) / 84, 2.0F); }
    /// The sum of which view 1 makes a bar that high, of a band that many values wide.
    static float Bar(int height, int values)
    {
        return std::pow((static_cast<float>(height) + 4) / 47.6F, 2.0F)
               * std::log10(10.0F + static_cast<float>(values));
    }
};

TEST_F(Views, FineSpectrumFillsTheColumnsBetweenWithTheMeanRoundedToEven)
{
    m_spectrum[0] = 1; // never drawn
    m_spectrum[1] = Fine(5);
    m_spectrum[2] = Fine(2);
    m_spectrum[3] = Fine(0);
    m_spectrum[5] = Fine(3);
    m_spectrum[6] = Fine(2);
    m_spectrum[51] = 1; // beyond the picture
    DrawFineSpectrum(m_spectrum, m_buffer);
    EXPECT_EQ(Picture(m_buffer), Expected({"5", "44", "33......3", "222.....222", "1111....111"}));
}

TEST_F(Views, BarsHaveALogarithmicScaleAndTheLastTwoRunOver)
{
    m_spectrum[0] = 1;
    m_spectrum[1] = Bar(3, 1);
    m_spectrum[3] = Bar(1, 1);
    m_spectrum[682] = Bar(2, 154) / 2; // bands are sums
    m_spectrum[835] = Bar(2, 154) / 2;
    m_spectrum[1023] = Bar(3, 188);
    m_spectrum[1024] = 1; // beyond the last band
    DrawBars(m_spectrum, BarScale(), m_buffer);
    EXPECT_EQ(Picture(m_buffer),
              Expected({"..33",
                        "3322",
                        "2211" + std::string(95, '.') + "2",
                        "11....11" + std::string(91, '.') + "1"})
                  .replace(std::size_t{25} * 101, 1, "2") // the last but one, run over
                  .replace(std::size_t{26} * 101, 1, "1"));
}

TEST_F(Views, FullScaleIsCappedAtTheTopRow)
{
    m_spectrum.assign(m_spectrum.size(), 1);
    SpectrumBuffer bars{Width, Height};
    DrawFineSpectrum(m_spectrum, m_buffer);
    DrawBars(m_spectrum, BarScale(), bars);
    for (std::int32_t row = 0; row < Height; ++row) {
        EXPECT_EQ(m_buffer.At(98, row), row + 1);
        EXPECT_EQ(bars.At(96, row), row + 1);
    }
}

TEST_F(Views, SilenceAndWhatIsNoNumberDrawNothing)
{
    for (const float level : {0.0F, std::nanf("")}) {
        m_spectrum.assign(m_spectrum.size(), level);
        DrawFineSpectrum(m_spectrum, m_buffer);
        DrawBars(m_spectrum, BarScale(), m_buffer);
        EXPECT_EQ(Picture(m_buffer), Expected({}));
    }
}

TEST_F(Views, HistoryWritesOneColumnAndKeepsTheOthers)
{
    m_spectrum[1] = 4; // capped
    m_spectrum[2] = std::pow(10 / 381.0F, 2.0F);
    std::int32_t position = DrawHistory(m_spectrum, 0, m_buffer);
    EXPECT_EQ(position, 1);
    std::vector<std::string> rows(26, "-W");
    rows.insert(rows.end(), {"mW", "WW"});
    EXPECT_EQ(Picture(m_buffer), Expected(rows));

    m_spectrum.assign(m_spectrum.size(), 0);
    for (int frame = 1; frame < Width; ++frame)
        position = DrawHistory(m_spectrum, position, m_buffer);
    EXPECT_EQ(position, 0) << "it wraps";
    EXPECT_EQ(Picture(m_buffer),
              Expected(std::vector<std::string>(28, "W" + std::string(99, '-'))));
}

TEST_F(Views, WaveJoinsEachSampleToTheOneBefore)
{
    std::vector<float> samples(Width);
    samples[2] = 1;
    samples[5] = -7; // held at the top row
    DrawWave(samples, 1, m_buffer);
    std::vector<std::string> rows(13, ".....11");
    rows[0] = ".....1";
    rows.push_back("11.11." + std::string(94, '1'));
    rows.insert(rows.end(), 13, "..11");
    rows.emplace_back("..1");
    EXPECT_EQ(Picture(m_buffer), Expected(rows));
}

TEST_F(Views, WaveDrawsTheChannelsInTurnWithoutALineBetweenThem)
{
    // Left silent, right at the lower edge, a third one half way down.
    std::vector<float> samples;
    for (int x = 0; x < Width; ++x)
        samples.insert(samples.end(), {0.0F, 1.0F, 0.5F});
    DrawWave(samples, 3, m_buffer);
    std::vector<std::string> rows(15, "");
    rows[0] = std::string(100, '1');
    rows[7] = std::string(100, '1');
    rows[14] = std::string(100, 'R');
    EXPECT_EQ(Picture(m_buffer), Expected(rows));
    m_buffer.Clear();
    DrawWave({}, 0, m_buffer);
    EXPECT_EQ(Picture(m_buffer), Expected({}));
}

} // namespace
} // namespace velmo
