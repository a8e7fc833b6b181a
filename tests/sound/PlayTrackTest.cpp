#include "SoundFixture.h"

#include "sound/ChannelFlags.h"

namespace velmo {
namespace {

class PlayTrack : public SoundTest
{
protected:
    PlayTrack()
    {
        m_player.AddSound("/m/song.mp3", {.seconds = 60});
        m_player.AddSound("/m/other.ogg", {.seconds = 30});
        m_player.AddSound("/m/tune.xm", {.seconds = 20, .isModule = true});
        m_player.files.files["/m/text.mp3"] = "";
    }

    /// What the library is asked for meanwhile.
    std::string CallsOf(const char* path)
    {
        m_player.bass.calls.clear();
        m_player.tracks.PlayTrack(path);
        return m_player.bass.TakeCalls();
    }
};

TEST_F(PlayTrack, StreamsAreTriedFirstThenModulesThenTheLocationThatNeverOpens)
{
    for (const char* path : {"/m/song.mp3", "/m/tune.xm"})
        m_player.tagLibrary.formatTags[path + std::string(" %TITL")] = "Title";
    EXPECT_EQ(CallsOf("/m/song.mp3"), "BASS_StreamCreateFile /m/song.mp3; BASS_ChannelPlay 101");
    EXPECT_EQ(CallsOf("/m/tune.xm"),
              "BASS_ChannelStop 101; BASS_StreamCreateFile /m/tune.xm; BASS_MusicLoad /m/tune.xm; "
              "BASS_ChannelPlay 102");
    EXPECT_EQ(CallsOf("http://radio/stream"),
              "BASS_ChannelStop 102; BASS_StreamCreateFile http://radio/stream; "
              "BASS_MusicLoad http://radio/stream; BASS_StreamCreateURL; BASS_ChannelPlay 0; "
              // no tags on handle 0: the file is asked once more, by the same three attempts
              "BASS_StreamCreateFile http://radio/stream; BASS_StreamCreateURL; "
              "BASS_MusicLoad http://radio/stream; BASS_StreamFree 0; BASS_MusicFree 0");
    EXPECT_EQ(m_state.CurrentChannel, 0U);
}

TEST_F(PlayTrack, ShowsTheTitleAndStartsTheMonitor)
{
    m_player.tagLibrary.formatTags["/m/song.mp3 %ARTI"] = "Artist";
    m_player.tagLibrary.formatTags["/m/song.mp3 %TITL"] = "Title";
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), "Velmo Player - Artist - Title   ***   ");
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
    EXPECT_TRUE(m_wmain.imgPositionTicker.Visible);
    EXPECT_EQ(m_state.CurrentFile, "/m/song.mp3");

    // Without tags, and without a tag library, it is the file's name.
    m_player.tracks.PlayTrack("/m/other.ogg");
    EXPECT_EQ(m_state.CurrentTitleText, "Velmo Player - other   ***   ");
    m_player.tagLibrary.missing = true;
    m_player.Set("Options", "ConvertUnderscore", "TRUE");
    m_player.AddSound("/m/with_blanks.ogg", {.seconds = 1});
    m_player.tracks.PlayTrack("/m/with_blanks.ogg");
    EXPECT_EQ(m_state.CurrentTitleText, "Velmo Player - with blanks   ***   ");
}

TEST_F(PlayTrack, ABadFileIsReportedOnlyBeforeAnythingHasPlayed)
{
    m_player.tracks.PlayTrack("/m/text.mp3");
    EXPECT_TRUE(m_player.errMGR.Visible);
    EXPECT_EQ(m_player.errMGR.txtMessage.Text.Get(),
              "Can't play file.\nUnknown file format or file not audio.\nError code: 5");
    EXPECT_FALSE(m_wmain.imgPositionTicker.Visible || m_wmain.imgPositionBar.Visible);
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), IdleTitle);
    EXPECT_FALSE(m_wmain.tmrBASS.Enabled);

    m_player.errMGR.Hide();
    m_player.tracks.PlayTrack("/m/song.mp3");
    m_player.tracks.PlayTrack("/m/text.mp3");
    EXPECT_FALSE(m_player.errMGR.Visible);
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), "Velmo Player - text   ***   ");
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled) << "the monitor moves on from the bad file";
}

TEST_F(PlayTrack, ModePlayRewritesTheSelectedEntryWhateverPlays)
{
    m_player.SetAll("Options", "ReadTitlesOn=Play|Convert%20%=True");
    m_rows.Add({.Text = "1. a", .Length = "", .Path = "/m/other.ogg"});
    m_player.tagLibrary.formatTags["/m/other.ogg %TITL"] = "Other%20title";
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_rows.Row(1), (controls::PlaylistEntry{"1. Other title", "01:00", "/m/other.ogg"}))
        << "the length is that of what plays";

    m_player.Set("Options", "ShowLengthInPL", "false");
    m_player.Set("Display", "ShowNumbersInPL", "false");
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_rows.Row(1), (controls::PlaylistEntry{"Other title", "", "/m/other.ogg"}));
    m_rows.SetRow(1, {.Text = "x", .Length = "", .Path = "/gone/b.mp3"});
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_rows.Row(1).Path, "/gone/b.mp3") << "gone for now, it keeps its path";
}

TEST_F(PlayTrack, FlagsFollowTheSettingsAtEachOpening)
{
    const auto flags = [&] { return ChannelFlags(m_player.settings); };
    EXPECT_EQ(flags(), (OpenFlags{.stream = 0x4000A, .module = 0x40A0A}));
    m_player.Set("Sound", "Sound3D", "False");
    EXPECT_EQ(flags(), (OpenFlags{.stream = 0x40000, .module = 0x40000}));
    m_player.SetAll("Sound", "SA_StereoMode=16777216 front|SA_MonoMode=33554432");
    EXPECT_EQ(flags().stream, 0x1040000U);
    m_player.Set("Sound", "Channel", "MONO");
    EXPECT_EQ(flags().stream, 0x2040000U);

    EXPECT_EQ(DeviceFlags(m_player.settings), 262U);
    m_player.Set("Sound", "Bits", "8");
    EXPECT_EQ(DeviceFlags(m_player.settings), 263U);
    m_player.SetAll("Sound", "SpeakerAssign=True|Channel=Stereo");
    EXPECT_EQ(DeviceFlags(m_player.settings), 260U + 1 + 2048);
}

} // namespace
} // namespace velmo
