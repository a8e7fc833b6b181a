#include "equalizer/fX.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using controls::Image;
using controls::MouseButton;
using ::testing::Each;

class EqualizerWindow : public ::testing::Test
{
protected:
    EqualizerWindow()
    {
        m_player.AddSound("/m/a.mp3", {.seconds = 60});
        m_player.tracks.PlayTrack("/m/a.mp3");
        m_window.Calls.CurrentChannel = [this] { return m_player.state.CurrentChannel; };
        m_window.Load();
        m_window.ReadState();
        m_player.equalizer.ApplyIfOn(m_player.state.CurrentChannel);
    }

    /// The picture's number in its list.
    static int Shown(const Image& image) { return image.Picture.Get().index; }
    static void Click(const Image& image, double x = 0, double y = 0)
    {
        image.MouseDown({.button = MouseButton::Left, .x = x, .y = y});
        image.MouseUp({.button = MouseButton::Left, .x = x, .y = y});
    }
    /// What the effects on the channel add to a band, in dB.
    float Gain(int band) const
    {
        float sum = 0;
        for (const auto& [handle, effect] : m_player.bass.effects)
            sum += effect.bands.at(band).fGain;
        return sum;
    }
    std::string Setting(const char* section, const char* key)
    {
        return m_player.settings.ReadSetting(section, key, "-");
    }

    test::FakePlayer m_player;
    forms::fX& m_form = m_player.fX;
    fX m_window{m_form, m_player.equalizer, m_player.curves, m_player.settings};
};

TEST_F(EqualizerWindow, ADraggedTickerGoesWithThePointerUntilItWouldLeaveTheBar)
{
    const Image& ticker = m_form.Ticker[4];
    ticker.MouseDown({.button = MouseButton::Left, .y = 59.6});
    const struct
    {
        double y; ///< from the ticker's top
        double top;
        const char* tip;
        float gain;
    } moves[] = {
        {92,   732,  "-1",  -1 },
        {328,  1000, "-10", -10},
        {75,   1000, "-10", -10}, // past the end: it stays
        {-580, 360,  " 10", 10 },
        {59,   360,  " 10", 10 },
        {88,   388,  " 9",  9  },
    };
    for (const auto& move : moves) {
        ticker.MouseMove({.button = MouseButton::Left, .y = move.y});
        EXPECT_EQ(ticker.Top, move.top) << move.y;
        EXPECT_EQ(ticker.ToolTipText.Get(), move.tip);
        EXPECT_EQ(m_form.Bar[4].ToolTipText.Get(), move.tip);
        EXPECT_EQ(Gain(4), move.gain);
    }
    ticker.MouseUp({.button = MouseButton::Left});
    ticker.MouseMove({.y = 100});
    EXPECT_EQ(ticker.Top, 388);
    m_player.equalizer.ApplyEqualizer(m_player.state.CurrentChannel);
    EXPECT_EQ(ticker.ToolTipText.Get(), " 10") << "the next track plays more than the drag told";
}

TEST_F(EqualizerWindow, AClickedBarBringsTheTickersMiddleThere)
{
    const std::pair<double, double> clicks[] = {
        {-50,  360 },
        {95.5, 388 },
        {407,  700 },
        {5000, 1000}
    }; // 699.5 goes to the even neighbour
    for (const auto& [y, top] : clicks) {
        Click(m_form.Bar[10], 0, y);
        EXPECT_EQ(m_form.Ticker[10].Top, top) << y;
    }
    EXPECT_EQ(m_form.Ticker[10].ToolTipText.Get(), "-10");
    EXPECT_EQ(Gain(10), -10);
}

TEST_F(EqualizerWindow, TheRestOfItsPicturesGoesOutWhenOneLightsUp)
{
    const struct
    {
        const Image& entered;
        int shown;
        const Image& left;
        int leftShown;
    } moves[] = {
        {m_form.Ticker[2], 22, m_form.Bar[2],    2 },
        {m_form.Ticker[3], 22, m_form.Ticker[2], 20},
        {m_form.Bar[3],    4,  m_form.Ticker[3], 20},
        {m_form.Ticker[3], 22, m_form.Bar[3],    2 },
        {m_form.btnState,  7,  m_form.btnSave,   17},
        {m_form.btnSave,   19, m_form.btnState,  5 },
    };
    for (const auto& move : moves) {
        move.entered.MouseMove({});
        EXPECT_EQ(Shown(move.entered), move.shown) << move.entered.Name;
        EXPECT_EQ(Shown(move.left), move.leftShown) << move.left.Name;
    }
    m_form.imgCaptionClose.MouseMove({});
    m_form.MouseMove({});
    for (const Image* image : {&m_form.Ticker[3], &m_form.btnSave, &m_form.imgCaptionClose})
        EXPECT_EQ(image->Picture.Get(), image->States.normal) << image->Name;
}

TEST_F(EqualizerWindow, ItsStateIsSwitchedResetAndKept)
{
    Click(m_form.Bar[2]);
    Click(m_form.btnState);
    EXPECT_TRUE(m_player.bass.effects.empty());
    EXPECT_EQ(Setting("DSP\\Effects", "EQEnabled"), "False");
    EXPECT_EQ(Shown(m_form.btnState), 8);
    Click(m_form.Bar[7]); // off: moves, and is heard once it's on
    Click(m_form.btnState);
    EXPECT_EQ(Gain(2), 10);
    EXPECT_EQ(Gain(7), 10);
    EXPECT_EQ(Setting("DSP\\Effects", "EQEnabled"), "True");
    EXPECT_EQ(Shown(m_form.btnState), 5);

    Click(m_form.btnReset);
    EXPECT_EQ(m_player.bass.effects.size(), 1U);
    EXPECT_EQ(Gain(2), 0);
    EXPECT_EQ(m_form.Bar[2].ToolTipText.Get(), " 0");
    Click(m_form.btnState);
    Click(m_form.Bar[2]);
    Click(m_form.btnReset);
    EXPECT_EQ(m_form.Ticker[2].Top, forms::FlatTickerTop);
    EXPECT_EQ(m_form.Ticker[2].ToolTipText.Get(), "0");
    EXPECT_EQ(m_form.Bar[1].ToolTipText.Get(), "0");
    EXPECT_EQ(m_form.Bar[2].ToolTipText.Get(), " 10") << "forgotten";
    EXPECT_THAT(m_player.equalizer.EqualizerBandValue, Each(10));
}

TEST_F(EqualizerWindow, ItsCloseKeyReachesBeyondItsPicture)
{
    int hidden = 0;
    m_window.Calls.Hide = [&] { ++hidden; };
    for (const auto& [x, y] : {std::pair(286., 0.), std::pair(0., 211.), std::pair(-1., 0.)})
        Click(m_form.imgCaptionClose, x, y);
    m_form.imgCaptionClose.MouseUp({.button = MouseButton::Right});
    EXPECT_EQ(hidden, 0);
    EXPECT_EQ(Shown(m_form.imgCaptionClose), 3);
    Click(m_form.imgCaptionClose, 285, 210);
    EXPECT_EQ(hidden, 1);
}

} // namespace
} // namespace velmo
