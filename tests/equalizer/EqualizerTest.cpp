#include "equalizer/fX.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

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
        m_window.Load();
    }

    std::vector<double> Tops() const
    {
        std::vector<double> tops;
        for (const controls::Image& ticker : m_player.fX.Ticker)
            tops.push_back(ticker.Top);
        return tops;
    }
    /// Gains of an effect, from the lowest band up.
    std::vector<float> Gains(HFX effect) const
    {
        std::vector<float> gains;
        for (const auto& [number, band] : m_player.bass.effects.at(effect).bands)
            gains.push_back(band.fGain);
        return gains;
    }
    void Choose(const std::string& path)
    {
        m_player.dialogs.choice = {.paths = {path}, .label = "EQ Settings (*.zfx)"};
    }
    std::string Folder(const char* key) { return m_player.settings.ReadSetting("RTM", key, "-"); }

    test::FakePlayer m_player;
    fX m_window{m_player.fX, m_player.equalizer, m_player.curves, m_player.settings};
};

TEST_F(Equalizer, MakesTheBandsFlatThenSetsTheTickersGains)
{
    m_player.fX.Ticker[2].Top = 360;
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.bass.calls.clear();
    const HFX effect = m_player.equalizer.ApplyEqualizer(101);
    std::vector<std::string> calls = {"BASS_ChannelGetAttribute 101",
                                      "BASS_ChannelSetFX 101 65540 0"};
    for (int round = 0; round < 2; ++round)
        for (int band = 0; band < 11; ++band)
            calls.push_back("BASS_FXSetParameters 9001 " + std::to_string(band));
    EXPECT_EQ(m_player.bass.calls, calls);
    const auto& bands = m_player.bass.effects.at(effect).bands;
    std::vector<float> centres;
    for (const auto& [number, band] : bands) {
        centres.push_back(band.fCenter);
        EXPECT_EQ(band.fBandwidth, 2.5F);
        EXPECT_EQ(band.fQ, 0);
        EXPECT_EQ(band.lChannel, -1);
    }
    EXPECT_THAT(centres,
                ElementsAre(60, 170, 310, 600, 1000, 3000, 6000, 9000, 12000, 14000, 16000));
    EXPECT_THAT(Gains(effect), ElementsAre(0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(Equalizer, APositionIsTheLowerOfTheStepsItLiesBetween)
{
    EXPECT_EQ(m_player.fX.Bar[0].ToolTipText.Get(), "0");
    const struct
    {
        double top;
        std::int32_t step;
        const char* gain;
    } cases[] = {
        {360,   0,  " 10"},
        {388,   0,  " 10"}, // 95.5 / 32 is just below 3
        {388.5, 1,  " 9" },
        {700,   10, " 0" },
        {708.5, 11, "-1" },
        {1000,  20, "-10"},
    };
    m_player.tracks.PlayTrack("/m/a.mp3");
    for (const auto& c : cases) {
        m_player.fX.Ticker[4].Top = c.top;
        const HFX effect = m_player.equalizer.ApplyEqualizer(101);
        EXPECT_EQ(m_player.equalizer.EqualizerBandValue[4], c.step) << c.top;
        EXPECT_EQ(Gains(effect)[4], static_cast<float>(10 - c.step));
        EXPECT_EQ(m_player.fX.Ticker[4].ToolTipText.Get(), c.gain);
        EXPECT_EQ(m_player.fX.Bar[4].ToolTipText.Get(), c.gain);
    }
    EXPECT_EQ(m_player.fX.Ticker[0].ToolTipText.Get(), " 0");
}

TEST_F(Equalizer, EachTrackGetsAnEffectOfItsOwnWhileItIsOn)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    EXPECT_TRUE(m_player.bass.effects.empty()) << "off";
    m_window.ReadState();
    EXPECT_TRUE(m_player.fX.EqualizerOn) << "the default";
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.playlist.pl.Add({.Text = "1. b", .Length = "", .Path = "/m/b.mp3"});
    m_player.state.PlayIndex = 1;
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    m_player.fX.Ticker[0].Top = 1000;
    m_player.tracks.PlayPrepared(m_player.state.NextChannel);
    EXPECT_EQ(m_player.bass.effects.at(9001).channel, m_player.state.CurrentChannel);
    EXPECT_EQ(m_player.bass.effects.at(9002).channel, m_player.state.NextChannel);
    EXPECT_EQ(m_player.equalizer.EqualizerHandle, 9002U);
    EXPECT_EQ(Gains(9001)[0], 0);
    EXPECT_EQ(Gains(9002)[0], -10);

    // A bad file, and a handle whose channel is gone, change nothing.
    m_player.tracks.PlayTrack("/m/gone.mp3");
    EXPECT_EQ(m_player.equalizer.EqualizerHandle, 0U);
    m_player.equalizer.SetEqualizerBand(9001, 3, 0);
    EXPECT_EQ(Gains(9001)[3], 0);
    m_player.settings.WriteSetting("DSP\\Effects", "EQEnabled", "FALSE");
    m_window.ReadState();
    EXPECT_FALSE(m_player.fX.EqualizerOn);
}

TEST_F(Equalizer, ALoadedWindowIsNotMadeFlatAgain)
{
    m_player.fX.Ticker[3].Top = 500;
    m_window.Load();
    EXPECT_EQ(m_player.fX.Ticker[3].Top, 500);
    m_player.fX.Loaded = false; // unloaded
    m_window.Load();
    EXPECT_THAT(Tops(), Each(700));
}

TEST_F(Equalizer, TheDefaultFileHoldsTheTickersByteForByte)
{
    m_player.curves.LoadDefaultEqualizer();
    EXPECT_THAT(Tops(), Each(700)) << "there is no file";
    m_player.curves.SaveDefaultEqualizer();
    EXPECT_EQ(m_player.files.files["/app/zuvio.zfx"], Flat);

    m_player.fX.Ticker[0].Top = 360;
    m_player.fX.Ticker[1].Top = 360.5;
    m_player.fX.Ticker[10].Top = 1000;
    m_player.curves.SaveDefaultEqualizer();
    EXPECT_EQ(m_player.files.files["/app/zuvio.zfx"].substr(0, 24),
              "ZVFX10\r\n 360 \r\n 360.5 \r\n");
    for (controls::Image& ticker : m_player.fX.Ticker)
        ticker.Top = 650;
    m_player.curves.LoadDefaultEqualizer();
    EXPECT_THAT(Tops(), ElementsAre(650, 360.5, 700, 700, 700, 700, 700, 700, 700, 700, 650))
        << "both ends are not read back";
    EXPECT_TRUE(m_player.bass.effects.empty());

    m_player.files.writesFail = true;
    m_player.curves.SaveDefaultEqualizer(); // passes
}

TEST_F(Equalizer, ReadsWhatIsThereAndLeavesTheRest)
{
    const struct
    {
        const char* bytes;
        double first;
        double second;
        double third;
    } cases[] = {
        {"ZVFX10\r\n 400 \r\n 500 \r\n 600 \r\n", 400,   500, 600},
        {"ZVFX10\n400\n500",                      400,   500, 700},
        {"ZVFX10\r400\r500\r600",                 400,   500, 600},
        {"\xEF\xBB\xBFZVFX10\r\n400\r\n",         400,   700, 700},
        {"ZVFX10 and more\r\n400.5x\r\n",         400.5, 700, 700},
        {"ZVFX10\r\n999.5\r\n1e9\r\n&H1F4",       999.5, 700, 500},
        {"ZVFX10\r\n360\r\n\r\n1000",             700,   700, 700},
        {"zvfx10\r\n400\r\n",                     700,   700, 700},
        {"ZVFX1",                                 700,   700, 700},
        {"",                                      700,   700, 700},
    };
    for (const auto& c : cases) {
        for (controls::Image& ticker : m_player.fX.Ticker)
            ticker.Top = 700;
        m_player.files.files["/app/zuvio.zfx"] = c.bytes;
        m_player.curves.LoadDefaultEqualizer();
        std::vector<double> expected(11, 700);
        expected[0] = c.first;
        expected[1] = c.second;
        expected[2] = c.third;
        EXPECT_EQ(Tops(), expected) << c.bytes;
    }
}

TEST_F(Equalizer, LoadingByDialogStacksOneMoreEffect)
{
    m_player.curves.LoadEqualizerFile(101);
    ASSERT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    const ports::FileDialog& asked = m_player.dialogs.fileDialogs[0];
    EXPECT_EQ(asked.kind, ports::FileDialogKind::Open);
    EXPECT_EQ(asked.owner, "fX");
    EXPECT_EQ(asked.title, "Load EQ Settings");
    EXPECT_EQ(asked.filter, "EQ Settings (*.zfx)|*.zfx");
    EXPECT_EQ(asked.folder, "/app/");
    EXPECT_EQ(Folder("TempDir6"), "-") << "cancelled";

    m_player.fX.EqualizerOn = true;
    m_player.tracks.PlayTrack("/m/a.mp3");
    std::string curve = Flat;
    m_player.files.files["/eq/rock.zfx"] = curve.replace(9, 3, "400");
    Choose("/eq/rock.zfx");
    m_player.curves.LoadEqualizerFile(101);
    m_player.curves.LoadEqualizerFile(101);
    EXPECT_EQ(Tops()[0], 400);
    EXPECT_EQ(m_player.bass.effects.size(), 3U) << "none was taken off";
    EXPECT_EQ(m_player.equalizer.EqualizerHandle, 9003U);
    EXPECT_EQ(Folder("TempDir6"), "/eq/");
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().folder, "/eq/");

    // Too short by one byte, and foreign: refused, but the folder counts as used.
    m_player.fX.EqualizerOn = false;
    m_player.files.files["/x/short.zfx"] = std::string(Flat, 84).replace(9, 3, "500");
    m_player.files.files["/y/other.zfx"] = std::string(200, 'x');
    for (const char* refused : {"/x/short.zfx", "/y/other.zfx", "/z/gone.zfx"}) {
        Choose(refused);
        m_player.curves.LoadEqualizerFile(101);
        EXPECT_EQ(Tops()[0], 400) << refused;
        EXPECT_EQ(Folder("TempDir6"), std::string(refused, 3));
    }
    EXPECT_EQ(m_player.bass.effects.size(), 3U);
}

TEST_F(Equalizer, SavingByDialogForcesTheExtension)
{
    m_player.curves.SaveEqualizerFile();
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().title, "Save EQ Settings");
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().kind, ports::FileDialogKind::Save);
    EXPECT_EQ(Folder("TempDir5"), "-");
    const std::pair<const char*, const char*> cases[] = {
        {"/eq/a",     "/eq/a.zfx"    },
        {"/eq/B.ZFX", "/eq/B.ZFX"    },
        {"/eq/c.txt", "/eq/c.txt.zfx"},
        {"/eq/zfx",   "/eq/zfx.zfx"  },
    };
    for (const auto& [chosen, written] : cases) {
        Choose(chosen);
        m_player.curves.SaveEqualizerFile();
        EXPECT_EQ(m_player.files.files[written], Flat) << chosen;
    }
    EXPECT_FALSE(m_player.files.files.contains("/eq/B.ZFX.zfx"));
    EXPECT_EQ(Folder("TempDir5"), "/eq/");
}

} // namespace
} // namespace velmo
