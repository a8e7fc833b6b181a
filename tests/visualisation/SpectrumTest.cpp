#include "visualisation/Spectrum.h"

#include "support/FakePlayer.h"
#include "support/Mouse.h"

#include <gmock/gmock.h>

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

    void Set(const char* key, const char* value) { m_player.Set("Visualisation", key, value); }
    std::string Get(const char* key) { return m_player.Get("Visualisation", key); }
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
    EXPECT_THAT(m_box.Pixels(), testing::Each(0xFF000000U));
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
    const auto expect = [](const char* colour, std::uint32_t entry1, std::uint32_t entry127) {
        const controls::Palette colours = MakeBitmapInfo(100, 28, colour).bmiColors;
        EXPECT_EQ(colours[0], 0U);
        EXPECT_EQ(colours[1], entry1) << colour;
        EXPECT_EQ(colours[127], entry127) << colour;
        std::vector<std::uint32_t> ends;
        for (const std::size_t entry : {128, 159, 160, 191, 192, 223, 224, 255})
            ends.push_back(colours[entry]);
        EXPECT_THAT(ends,
                    ElementsAre(0, 0xF8, 0xFF, 0xF800FF, 0xFF00F8, 0xFFF800, 0xFFFF00, 0xFFFFF8));
    };
    expect("GREEN", 0x02FD00, 0xFE0100);
    expect("red", 0xFD0200, 0x01FE00);
    expect("Blue", 0x0200FD, 0xFE0001);
    expect("purple", 0, 0);
    EXPECT_EQ(MakeBitmapInfo(100, 28, "").biHeight, 280);
}

TEST_F(LivePicture, TheStartReadsViewAndRate)
{
    const auto expectView = [&](const char* mode, const char* style, std::int32_t view) {
        Set("Mode", mode);
        Set("SpectrumStyle", style);
        m_player.spectrum.ReadSettings();
        EXPECT_EQ(m_player.spectrum.VisMode(), view) << mode;
    };
    expectView("", "", 1);
    expectView("SPECTRUM", "Smooth", 0);
    expectView("Spectrum", "Smooth&Small", 2);
    expectView("Spectrum", "other", 0);
    expectView("Oscilloscope", "Linear", 3);
    expectView("Waveform", "Linear", 0);
    expectView("None", "", 4);
    const auto expectInterval = [&](const char* rate, int intervalMs) {
        Set("RefreshRateFPS", rate);
        m_player.spectrum.ReadSettings();
        EXPECT_EQ(m_player.wmain.tmrSpectrum.Interval, intervalMs) << rate;
    };
    expectInterval("", 25);
    expectInterval("60", 16);
    expectInterval("1001", 0);
    expectInterval("0", 25);
    expectInterval("-1", 25);
    expectInterval("text", 25);
    expectInterval("1e-30", 2147483647);
}

TEST_F(LivePicture, ALeftClickGoesToTheNextViewAndSavesIt)
{
    Set("RefreshRateFPS", "10");
    m_player.spectrum.BuildHeaderAndPalette();
    m_player.spectrum.ReadSettings();
    m_player.spectrum.picVisualisation_MouseUp(test::Right);
    EXPECT_EQ(m_player.spectrum.VisMode(), 1);
    const auto expect =
        [&](std::int32_t view, const char* mode, const char* style, int intervalMs, int leastMs) {
            m_player.spectrum.picVisualisation_MouseUp(test::Left);
            EXPECT_EQ(m_player.spectrum.VisMode(), view);
            EXPECT_EQ(Get("Mode"), mode);
            EXPECT_EQ(Get("SpectrumStyle"), style);
            EXPECT_EQ(m_player.wmain.tmrSpectrum.Interval, intervalMs);
            EXPECT_EQ(m_player.wmain.tmrSpectrum.LeastMs, leastMs);
        };
    expect(2, "Oscilloscope", "", 25, 0);
    expect(3, "Waveform", "", 25, 0);
    expect(4, "None", "", 25, 0);
    expect(0, "Spectrum", "Smooth", 1, 10);
    expect(1, "Spectrum", "Linear", 25, 0);
    expect(2, "Oscilloscope", "Linear", 25, 0);
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
    using controls::WindowState;
    const auto runsAfter = [&](const char* setting, WindowState state) {
        Set("DisableVisOnMin", setting);
        m_player.wmain.tmrSpectrum.Enabled = state == WindowState::Minimized;
        m_player.wmain.State = state;
        m_player.spectrum.wmain_Resize();
        return m_player.wmain.tmrSpectrum.Enabled.Get();
    };
    EXPECT_FALSE(runsAfter("", WindowState::Minimized));
    EXPECT_FALSE(runsAfter("TRUE", WindowState::Minimized));
    EXPECT_TRUE(runsAfter("False", WindowState::Minimized));
    EXPECT_TRUE(runsAfter("True", WindowState::Normal));
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

    m_player.transport.imgPause_MouseUp(test::Left);
    tick(100);
    EXPECT_TRUE(timer.Resting) << "a pause is still";
    m_told.clear();
    m_player.bass.spectrum[3] = 0.04F;
    m_player.spectrum.tmrScroll_Timer();
    EXPECT_FALSE(m_told.empty()) << "what is at the pause's new place is seen";
    EXPECT_TRUE(timer.Resting);
    m_player.transport.imgPause_MouseUp(test::Left);
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
