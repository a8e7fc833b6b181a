#include "visualisation/Spectrum.h"

#include "support/FakePlayer.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace velmo {
namespace {

using controls::PixelArea;
using ::testing::ElementsAre;

class LivePicture : public ::testing::Test
{
protected:
    LivePicture()
    {
        m_box.PixelsChanged = [this](const PixelArea& area) { m_told.push_back(area); };
        m_player.AddSound("/m/a.mp3", {.seconds = 100});
        m_player.bass.spectrum.assign(1024, 0);
    }

    void Set(const char* key, const char* value)
    {
        m_player.settings.WriteSetting("Visualisation", key, value);
    }
    std::string Get(const char* key)
    {
        return m_player.settings.ReadSetting("Visualisation", key, "-");
    }
    /// A frame in that view, of the track that plays.
    void Frame(std::int32_t view)
    {
        m_player.spectrum.SetVisMode(view);
        m_told.clear();
        m_player.bass.calls.clear();
        m_player.spectrum.DrawVisualisationFrame();
    }

    test::FakePlayer m_player;
    controls::Picture& m_box = m_player.wmain.picVisualisation;
    std::vector<PixelArea> m_told;
};

TEST_F(LivePicture, ShowsOnlyWhatHasChanged)
{
    Frame(1);
    EXPECT_TRUE(m_player.bass.calls.empty()) << "before the start has made header and palette";
    EXPECT_TRUE(m_told.empty());

    m_player.spectrum.BuildHeaderAndPalette();
    Frame(1);
    EXPECT_THAT(m_told, ElementsAre(PixelArea{0, 0, 100, 28})) << "black, without a channel";
    EXPECT_TRUE(std::all_of(m_box.Pixels().begin(), m_box.Pixels().end(), [](std::uint32_t pixel) {
        return pixel == 0xFF000000;
    }));
    Frame(1);
    EXPECT_TRUE(m_told.empty()) << "the same frame again";

    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.bass.spectrum[3] = 0.04F; // third bar: round(sqrt(0.04 / log10(11)) x 47.6 - 4)
    Frame(1);
    EXPECT_THAT(m_player.bass.calls, ElementsAre("BASS_ChannelGetData 101 2147483651"));
    EXPECT_THAT(m_told, ElementsAre(PixelArea{6, 23, 2, 5}));
    EXPECT_EQ(m_box.Pixels()[27 * 100 + 6], 0xFF02FD00U) << "entry 1, at the bottom";
    EXPECT_EQ(m_box.Pixels()[23 * 100 + 7], 0xFF0AF500U) << "entry 5, above it";

    m_player.spectrum.SetSpectrumColor("Red");
    Frame(1);
    EXPECT_THAT(m_told, ElementsAre(PixelArea{6, 23, 2, 5}));
    EXPECT_EQ(m_box.Pixels()[27 * 100 + 6], 0xFFFD0200U);
}

TEST_F(LivePicture, EachViewAsksTheLibraryForWhatItDraws)
{
    m_player.spectrum.BuildHeaderAndPalette();
    m_player.tracks.PlayTrack("/m/a.mp3");
    Frame(0);
    m_player.bass.spectrum[1] = 1;
    Frame(0);
    EXPECT_THAT(m_told, ElementsAre(PixelArea{0, 0, 2, 28}));
    Frame(2);
    Frame(2);
    EXPECT_THAT(m_told, ElementsAre(PixelArea{1, 0, 2, 28})) << "column and mark";
    m_player.spectrum.SetSpectrumColor("blue");
    m_told.clear();
    m_player.spectrum.DrawVisualisationFrame();
    EXPECT_THAT(m_told, ElementsAre(PixelArea{2, 0, 2, 28})) << "its colours are the same";

    m_player.bass.wave.assign(200, 0);
    Frame(3);
    EXPECT_THAT(m_player.bass.calls, ElementsAre("BASS_ChannelGetData 101 1073742624"));
    EXPECT_EQ(m_box.Pixels()[13 * 100 + 50], 0xFFFE0001U) << "right over left, entry 127";
    m_player.bass.chans = 1;
    Frame(3);
    EXPECT_THAT(m_player.bass.calls, ElementsAre("BASS_ChannelGetData 101 1073742224"));
    EXPECT_EQ(m_box.Pixels()[13 * 100 + 50], 0xFF0200FDU) << "entry 1";
    m_player.bass.channels.clear();
    Frame(3);
    EXPECT_EQ(m_box.Pixels()[13 * 100 + 50], 0xFF000000U) << "a dead channel has no trace";

    Frame(4);
    EXPECT_THAT(m_player.bass.calls, ElementsAre("BASS_ChannelGetData 101 2147483651"));
    EXPECT_TRUE(m_box.Pixels().empty()) << "the plain box";
    EXPECT_THAT(m_told, ElementsAre(PixelArea{0, 0, 100, 28}));
    Frame(4);
    EXPECT_TRUE(m_told.empty());
}

TEST(SpectrumPalette, RunsByItsColourThenTheSameForAll)
{
    const struct
    {
        const char* colour;
        std::uint32_t entry1;
        std::uint32_t entry127;
    } cases[] = {
        {"GREEN",  0x02FD00, 0xFE0100},
        {"red",    0xFD0200, 0x01FE00},
        {"Blue",   0x0200FD, 0xFE0001},
        {"purple", 0,        0       },
    };
    for (const auto& c : cases) {
        const BitmapInfo info = MakeBitmapInfo(100, 28, c.colour);
        EXPECT_EQ(info.biHeight, 280);
        const controls::Palette& colours = info.bmiColors;
        EXPECT_EQ(colours[0], 0U);
        EXPECT_EQ(colours[1], c.entry1) << c.colour;
        EXPECT_EQ(colours[127], c.entry127) << c.colour;
        const std::pair<std::size_t, std::uint32_t> shared[] = {
            {128, 0       },
            {159, 0x0000F8},
            {160, 0x0000FF},
            {191, 0xF800FF},
            {192, 0xFF00F8},
            {223, 0xFFF800},
            {224, 0xFFFF00},
            {255, 0xFFFFF8},
        };
        for (const auto& [entry, colour] : shared)
            EXPECT_EQ(colours[entry], colour) << entry;
    }
}

TEST_F(LivePicture, TheStartReadsViewAndRate)
{
    const struct
    {
        const char* mode;
        const char* style;
        const char* rate;
        std::int32_t view;
        int intervalMs;
    } cases[] = {
        {"",             "",             "",      1, 25        }, // the defaults
        {"SPECTRUM",     "Smooth",       "60",    0, 16        },
        {"Spectrum",     "Smooth&Small", "1000",  2, 1         },
        {"Spectrum",     "other",        "1001",  0, 0         },
        {"Oscilloscope", "Linear",       "0",     3, 25        },
        {"Waveform",     "Linear",       "-1",    0, 25        },
        {"None",         "",             "text",  4, 25        },
        {"Wave",         "",             "1e-30", 0, 2147483647},
    };
    for (const auto& c : cases) {
        Set("Mode", c.mode);
        Set("SpectrumStyle", c.style);
        Set("RefreshRateFPS", c.rate);
        m_player.spectrum.ReadSettings();
        EXPECT_EQ(m_player.spectrum.VisMode(), c.view) << c.mode;
        EXPECT_EQ(m_player.wmain.tmrSpectrum.Interval, c.intervalMs) << c.rate;
    }
}

TEST_F(LivePicture, ALeftClickGoesToTheNextViewAndSavesIt)
{
    Set("RefreshRateFPS", "10");
    m_player.spectrum.BuildHeaderAndPalette();
    m_player.spectrum.ReadSettings();
    m_player.spectrum.picVisualisation_MouseUp({.button = controls::MouseButton::Right});
    EXPECT_EQ(m_player.spectrum.VisMode(), 1);
    const struct
    {
        std::int32_t view;
        const char* mode;
        const char* style;
        int intervalMs;
        int leastMs;
    } cases[] = {
        {2, "Oscilloscope", "-",      25, 0 },
        {3, "Waveform",     "-",      25, 0 },
        {4, "None",         "-",      25, 0 },
        {0, "Spectrum",     "Smooth", 1,  10},
        {1, "Spectrum",     "Linear", 25, 0 },
        {2, "Oscilloscope", "Linear", 25, 0 },
    };
    for (const auto& c : cases) {
        m_player.spectrum.picVisualisation_MouseUp({.button = controls::MouseButton::Left});
        EXPECT_EQ(m_player.spectrum.VisMode(), c.view);
        EXPECT_EQ(Get("Mode"), c.mode);
        EXPECT_EQ(Get("SpectrumStyle"), c.style);
        EXPECT_EQ(m_player.wmain.tmrSpectrum.Interval, c.intervalMs);
        EXPECT_EQ(m_player.wmain.tmrSpectrum.LeastMs, c.leastMs);
    }
    // The history begins anew, on black.
    m_player.spectrum.DrawVisualisationFrame();
    m_player.spectrum.DrawVisualisationFrame();
    for (int round = 0; round < 5; ++round)
        m_player.spectrum.CycleView();
    m_player.spectrum.DrawVisualisationFrame();
    EXPECT_EQ(m_box.Pixels()[1], 0xFFFFFFF8U) << "the mark, on the second column";
    EXPECT_EQ(m_box.Pixels()[2], 0xFF000000U);
}

TEST_F(LivePicture, AMinimisedWindowStopsItAtOnceIfTheSettingsWantThat)
{
    const struct
    {
        const char* setting;
        controls::WindowState state;
        bool before;
        bool after;
    } cases[] = {
        {"",      controls::WindowState::Minimized, true,  false},
        {"TRUE",  controls::WindowState::Minimized, true,  false},
        {"False", controls::WindowState::Minimized, true,  true },
        {"True",  controls::WindowState::Normal,    false, true },
    };
    for (const auto& c : cases) {
        Set("DisableVisOnMin", c.setting);
        m_player.wmain.tmrSpectrum.Enabled = c.before;
        m_player.wmain.State = c.state;
        m_player.spectrum.wmain_Resize();
        EXPECT_EQ(m_player.wmain.tmrSpectrum.Enabled, c.after) << c.setting;
    }
}

TEST_F(LivePicture, TimerRestsWhileNoSoundMovesItAndWakesWithTheSound)
{
    const controls::Timer& timer = m_player.wmain.tmrSpectrum;
    const auto tick = [this](int times) {
        for (int i = 0; i < times; ++i)
            m_player.spectrum.tmrSpectrum_Timer();
    };
    m_player.state.SoundStarts = [this] { m_player.spectrum.Wake(); };
    m_player.spectrum.SetVisMode(2);
    tick(99);
    EXPECT_FALSE(timer.Resting) << "the history goes round once";
    tick(1);
    EXPECT_TRUE(timer.Resting) << "also before the start has made the palette";
    EXPECT_TRUE(timer.Enabled);
    m_player.spectrum.BuildHeaderAndPalette();
    m_player.tracks.PlayTrack("/m/a.mp3");
    EXPECT_FALSE(timer.Resting);
    tick(200);
    EXPECT_FALSE(timer.Resting) << "while it plays";

    m_player.transport.imgPause_MouseUp({.button = controls::MouseButton::Left});
    tick(100);
    EXPECT_TRUE(timer.Resting) << "a pause is still";
    m_told.clear();
    m_player.bass.spectrum[3] = 0.04F;
    m_player.spectrum.tmrScroll_Timer();
    EXPECT_FALSE(m_told.empty()) << "what is at the pause's new place is seen";
    EXPECT_TRUE(timer.Resting);
    m_player.transport.imgPause_MouseUp({.button = controls::MouseButton::Left});
    EXPECT_FALSE(timer.Resting);

    m_player.spectrum.SetVisMode(4);
    tick(100);
    EXPECT_TRUE(timer.Resting) << "the empty view has nothing to draw, whatever plays";
    m_player.spectrum.tmrScroll_Timer();
    EXPECT_TRUE(timer.Resting);
    m_player.spectrum.CycleView();
    EXPECT_FALSE(timer.Resting);
}

} // namespace
} // namespace velmo
