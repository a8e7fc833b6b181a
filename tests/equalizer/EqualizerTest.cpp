#include "equalizer/fX.h"
#include "support/FakePlayer.h"
#include "support/Mouse.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using controls::Image;
using test::Click;
using test::Left;
using test::LeftAt;
using ::testing::Each;
using ::testing::ElementsAre;

constexpr const char* Flat = "ZVFX10\r\n"
                             " 700 \r\n 700 \r\n 700 \r\n 700 \r\n 700 \r\n 700 \r\n"
                             " 700 \r\n 700 \r\n 700 \r\n 700 \r\n 700 \r\n";

class Equalizer : public ::testing::Test
{
protected:
    Equalizer()
    {
        m_player.AddSound("/m/a.mp3", {.seconds = 60});
        m_player.AddSound("/m/b.mp3", {.seconds = 60});
        m_window.Calls.CurrentChannel = [this] { return m_player.state.CurrentChannel; };
        m_window.Load();
        m_player.tracks.PlayTrack("/m/a.mp3");
    }

    std::vector<double> Tops() const
    {
        std::vector<double> tops;
        for (const Image& ticker : m_form.Ticker)
            tops.push_back(ticker.Top);
        return tops;
    }
    /// Of the effect that was applied last, in dB.
    float Gain(int band) const
    {
        return m_player.bass.effects.at(m_player.equalizer.EqualizerHandle).bands.at(band).fGain;
    }
    void SwitchOn()
    {
        m_window.ReadState();
        m_player.equalizer.ApplyIfOn(m_player.state.CurrentChannel);
    }
    void Choose(const Image& button, const std::string& path)
    {
        m_player.dialogs.choice = {.paths = {path}, .label = "EQ Settings (*.zfx)"};
        Click(button);
    }

    test::FakePlayer m_player;
    forms::fX& m_form = m_player.fX;
    std::map<std::string, std::string>& m_files = m_player.files.files;
    fX m_window{m_form, m_player.equalizer, m_player.curves, m_player.settings};
};

TEST_F(Equalizer, MakesTheBandsFlatThenSetsTheTickersGains)
{
    m_form.Ticker[2].Top = 360;
    m_player.bass.calls.clear();
    const HFX effect = m_player.equalizer.ApplyEqualizer(101);
    std::vector<std::string> calls = {"BASS_ChannelGetAttribute 101",
                                      "BASS_ChannelSetFX 101 65540 0"};
    for (int round = 0; round < 2; ++round)
        for (int band = 0; band < 11; ++band)
            calls.push_back("BASS_FXSetParameters 9001 " + std::to_string(band));
    EXPECT_EQ(m_player.bass.calls, calls);
    std::vector<float> centres;
    for (const auto& [number, band] : m_player.bass.effects.at(effect).bands) {
        centres.push_back(band.fCenter);
        EXPECT_EQ(band.fGain, number == 2 ? 10 : 0);
        EXPECT_EQ(band.fBandwidth, 2.5F);
        EXPECT_EQ(band.fQ, 0);
        EXPECT_EQ(band.lChannel, -1);
    }
    EXPECT_THAT(centres,
                ElementsAre(60, 170, 310, 600, 1000, 3000, 6000, 9000, 12000, 14000, 16000));
}

TEST_F(Equalizer, APositionIsTheLowerOfTheStepsItLiesBetween)
{
    const auto expect = [&](double top, std::int32_t step, const char* gain) {
        m_form.Ticker[4].Top = top;
        SwitchOn();
        EXPECT_EQ(m_player.equalizer.EqualizerBandValue[4], step) << top;
        EXPECT_EQ(Gain(4), static_cast<float>(10 - step));
        EXPECT_EQ(m_form.Ticker[4].ToolTipText.Get(), gain);
        EXPECT_EQ(m_form.Bar[4].ToolTipText.Get(), gain);
    };
    expect(360, 0, " 10");
    expect(388, 0, " 10"); // 95.5 / 32 is just below 3
    expect(388.5, 1, " 9");
    expect(708.5, 11, "-1");
    expect(1000, 20, "-10");
}

TEST_F(Equalizer, EachTrackGetsAnEffectOfItsOwnWhileItIsOn)
{
    EXPECT_TRUE(m_player.bass.effects.empty()) << "off";
    m_window.ReadState(); // on is the default
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.playlist.pl.Add({.Text = "1. b", .Length = "", .Path = "/m/b.mp3"});
    m_player.state.PlayIndex = 1;
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    m_form.Ticker[0].Top = 1000;
    m_player.tracks.PlayPrepared(m_player.state.NextChannel);
    EXPECT_EQ(m_player.bass.effects.at(9001).channel, m_player.state.CurrentChannel);
    EXPECT_EQ(m_player.bass.effects.at(9002).channel, m_player.state.NextChannel);
    EXPECT_EQ(m_player.equalizer.EqualizerHandle, 9002U);
    EXPECT_EQ(Gain(0), -10);
    const auto& first = m_player.bass.effects.at(9001).bands;
    EXPECT_EQ(first.at(0).fGain, 0);

    // A bad file, and a handle whose channel is gone, change nothing.
    m_player.tracks.PlayTrack("/m/gone.mp3");
    EXPECT_EQ(m_player.equalizer.EqualizerHandle, 0U);
    m_player.equalizer.SetEqualizerBand(9001, 3, 0);
    EXPECT_EQ(first.at(3).fGain, 0);
    m_player.Set("DSP\\Effects", "EQEnabled", "FALSE");
    m_window.ReadState();
    EXPECT_FALSE(m_form.EqualizerOn);
}

TEST_F(Equalizer, TheDefaultFileHoldsTheTickersByteForByte)
{
    m_player.curves.LoadDefaultEqualizer();
    EXPECT_THAT(Tops(), Each(700)) << "there is no file";
    m_form.Ticker[0].Top = 360;
    m_form.Ticker[1].Top = 360.5;
    m_form.Ticker[10].Top = 1000;
    m_player.curves.SaveDefaultEqualizer();
    EXPECT_EQ(m_files["/app/zuvio.zfx"],
              "ZVFX10\r\n 360 \r\n 360.5 \r\n 700 \r\n 700 \r\n 700 \r\n 700 \r\n 700 \r\n"
              " 700 \r\n 700 \r\n 700 \r\n 1000 \r\n");
    for (Image& ticker : m_form.Ticker)
        ticker.Top = 650;
    m_window.Load();
    EXPECT_THAT(Tops(), Each(650)) << "it is loaded already";
    m_player.curves.LoadDefaultEqualizer();
    EXPECT_THAT(Tops(), ElementsAre(650, 360.5, 700, 700, 700, 700, 700, 700, 700, 700, 650))
        << "both ends are not read back";
    EXPECT_TRUE(m_player.bass.effects.empty());
}

TEST_F(Equalizer, ReadsWhatIsThereAndLeavesTheRest)
{
    const auto expect = [&](const char* bytes, double first, double second) {
        for (Image& ticker : m_form.Ticker)
            ticker.Top = 700;
        m_files["/app/zuvio.zfx"] = bytes;
        m_player.curves.LoadDefaultEqualizer();
        EXPECT_EQ(Tops()[0], first) << bytes;
        EXPECT_EQ(Tops()[1], second) << bytes;
        EXPECT_EQ(Tops()[2], 700) << bytes;
    };
    expect("ZVFX10\n400\n500", 400, 500);
    expect("\xEF\xBB\xBFZVFX10\r\n 400 \r\n", 400, 700);
    expect("ZVFX10 and more\r400.5x\r&H1F4", 400.5, 500);
    expect("ZVFX10\r\n999.5\r\n1e9", 999.5, 700);
    expect("ZVFX10\r\n360\r\n\r\n", 700, 700);
    expect("zvfx10\r\n400\r\n", 700, 700);
    expect("", 700, 700);
}

TEST_F(Equalizer, LoadingByDialogStacksOneMoreEffect)
{
    Click(m_form.btnLoad);
    const ports::FileDialog& asked = m_player.dialogs.fileDialogs.at(0);
    EXPECT_EQ(asked.kind, ports::FileDialogKind::Open);
    EXPECT_EQ(asked.owner, "fX");
    EXPECT_EQ(asked.title, "Load EQ Settings");
    EXPECT_EQ(asked.filter, "EQ Settings (*.zfx)|*.zfx");
    EXPECT_EQ(asked.folder, "/app/");
    EXPECT_EQ(m_player.Get("RTM", "TempDir6"), "") << "cancelled";

    SwitchOn();
    m_files["/eq/rock.zfx"] = std::string(Flat).replace(9, 3, "400");
    for (int load = 0; load < 2; ++load)
        Choose(m_form.btnLoad, "/eq/rock.zfx");
    EXPECT_EQ(Tops()[0], 400);
    EXPECT_EQ(m_player.bass.effects.size(), 3U) << "none was taken off";
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().folder, "/eq/");

    // Too short by one byte, and foreign: refused, but the folder counts as used.
    m_form.EqualizerOn = false;
    m_files["/x/short.zfx"] = std::string(Flat, 84).replace(9, 3, "500");
    m_files["/y/other.zfx"] = std::string(200, 'x');
    for (const char* refused : {"/x/short.zfx", "/y/other.zfx", "/z/gone.zfx"}) {
        Choose(m_form.btnLoad, refused);
        EXPECT_EQ(Tops()[0], 400) << refused;
        EXPECT_EQ(m_player.Get("RTM", "TempDir6"), std::string(refused, 3));
    }
    EXPECT_EQ(m_player.bass.effects.size(), 3U);
}

TEST_F(Equalizer, SavingByDialogForcesTheExtension)
{
    Click(m_form.btnSave);
    const ports::FileDialog& asked = m_player.dialogs.fileDialogs.at(0);
    EXPECT_EQ(asked.title, "Save EQ Settings");
    EXPECT_EQ(asked.kind, ports::FileDialogKind::Save);
    EXPECT_EQ(m_player.Get("RTM", "TempDir5"), "");
    m_files.clear();
    for (const char* chosen : {"/eq/B.ZFX", "/eq/c.txt", "/eq/zfx"})
        Choose(m_form.btnSave, chosen);
    EXPECT_EQ(m_files,
              (std::map<std::string, std::string>{
                  {"/eq/B.ZFX",     Flat},
                  {"/eq/c.txt.zfx", Flat},
                  {"/eq/zfx.zfx",   Flat}
    }));
    EXPECT_EQ(m_player.Get("RTM", "TempDir5"), "/eq/");
}

TEST_F(Equalizer, ADraggedTickerGoesWithThePointerUntilItWouldLeaveTheBar)
{
    SwitchOn();
    const Image& ticker = m_form.Ticker[4];
    ticker.MouseDown(LeftAt(0, 59.6));
    // The place of the pointer is told from the ticker's top.
    const auto drag = [&](double y, double top, const char* tip, float gain) {
        ticker.MouseMove(LeftAt(0, y));
        EXPECT_EQ(ticker.Top, top) << y;
        EXPECT_EQ(ticker.ToolTipText.Get(), tip);
        EXPECT_EQ(Gain(4), gain);
    };
    drag(92, 732, "-1", -1);
    drag(328, 1000, "-10", -10);
    drag(75, 1000, "-10", -10); // past the end: it stays
    drag(-580, 360, " 10", 10);
    drag(59, 360, " 10", 10);
    drag(88, 388, " 9", 9);
    ticker.MouseUp(Left);
    ticker.MouseMove(LeftAt(0, 100));
    EXPECT_EQ(ticker.Top, 388);
    m_player.equalizer.ApplyEqualizer(m_player.state.CurrentChannel);
    EXPECT_EQ(ticker.ToolTipText.Get(), " 10") << "the next track plays more than the drag told";
}

TEST_F(Equalizer, AClickedBarBringsTheTickersMiddleThere)
{
    SwitchOn();
    const auto click = [&](double y, double top) {
        Click(m_form.Bar[10], 0, y);
        EXPECT_EQ(m_form.Ticker[10].Top, top) << y;
    };
    click(-50, 360);
    click(95.5, 388);
    click(407, 700); // 699.5 goes to the even neighbour
    click(5000, 1000);
    EXPECT_EQ(m_form.Ticker[10].ToolTipText.Get(), "-10");
    EXPECT_EQ(Gain(10), -10);
}

TEST_F(Equalizer, OneOfItsTickersAndBarsIsLit)
{
    const std::pair<const Image&, const Image&> moves[] = {
        {m_form.Ticker[2], m_form.Bar[2]   },
        {m_form.Ticker[3], m_form.Ticker[2]},
        {m_form.Bar[3],    m_form.Ticker[3]},
        {m_form.Ticker[3], m_form.Bar[3]   },
    };
    for (const auto& [entered, left] : moves) {
        entered.MouseMove({});
        EXPECT_EQ(entered.Picture.Get(), entered.States.hover) << entered.Name;
        EXPECT_EQ(left.Picture.Get(), left.States.normal) << left.Name;
    }
    m_form.MouseMove({});
    EXPECT_EQ(m_form.Ticker[3].Picture.Get(), m_form.Ticker[3].States.normal);
}

TEST_F(Equalizer, ItsStateIsSwitchedResetAndKept)
{
    SwitchOn();
    Click(m_form.btnState);
    EXPECT_TRUE(m_player.bass.effects.empty());
    EXPECT_EQ(m_form.btnState.Picture.Get().index, 8);
    Click(m_form.Bar[2]); // off: moves, and is heard once it's on
    Click(m_form.btnState);
    EXPECT_EQ(Gain(2), 10);
    Click(m_form.btnReset);
    EXPECT_EQ(m_player.bass.effects.size(), 1U);
    EXPECT_EQ(Gain(2), 0);
    EXPECT_EQ(m_form.Bar[2].ToolTipText.Get(), " 0");
    Click(m_form.btnState);
    Click(m_form.Bar[2]);
    Click(m_form.btnReset);
    EXPECT_THAT(Tops(), Each(700));
    EXPECT_EQ(m_form.Ticker[2].ToolTipText.Get(), "0");
    EXPECT_EQ(m_form.Bar[1].ToolTipText.Get(), "0");
    EXPECT_EQ(m_form.Bar[2].ToolTipText.Get(), " 10") << "forgotten";
    EXPECT_THAT(m_player.equalizer.EqualizerBandValue, Each(10));
}

TEST_F(Equalizer, ItsCloseKeyReachesBeyondItsPicture)
{
    int hidden = 0;
    m_window.Calls.Hide = [&] { ++hidden; };
    for (const auto& [x, y] : {std::pair(286., 0.), std::pair(0., 211.), std::pair(-1., 0.)})
        Click(m_form.imgCaptionClose, x, y);
    m_form.imgCaptionClose.MouseUp(test::Right);
    EXPECT_EQ(hidden, 0);
    Click(m_form.imgCaptionClose, 285, 210);
    EXPECT_EQ(hidden, 1);
}

} // namespace
} // namespace velmo
