#include "sound/ChannelFlags.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class PlayTrack : public ::testing::Test
{
protected:
    PlayTrack()
    {
        m_player.AddSound("/m/song.mp3", {.seconds = 60});
        m_player.AddSound("/m/other.ogg", {.seconds = 30});
        m_player.AddSound("/m/tune.xm", {.seconds = 20, .isModule = true});
        m_player.files.files["/m/text.mp3"] = "";
    }

    test::FakePlayer m_player;
};

TEST_F(PlayTrack, StreamsAreTriedFirstThenModulesThenTheLocationThatNeverOpens)
{
    m_player.tagLibrary.formatTags = {
        {"/m/song.mp3 %TITL", "Song"},
        {"/m/tune.xm %TITL",  "Tune"}
    };
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_THAT(m_player.bass.calls,
                ElementsAre("BASS_StreamCreateFile /m/song.mp3", "BASS_ChannelPlay 101"));

    m_player.bass.calls.clear();
    m_player.tracks.PlayTrack("/m/tune.xm");
    EXPECT_THAT(m_player.bass.calls,
                ElementsAre("BASS_ChannelStop 101",
                            "BASS_StreamCreateFile /m/tune.xm",
                            "BASS_MusicLoad /m/tune.xm",
                            "BASS_ChannelPlay 102"));

    m_player.bass.calls.clear();
    m_player.tracks.PlayTrack("http://radio/stream");
    EXPECT_THAT(
        m_player.bass.calls,
        ElementsAre("BASS_ChannelStop 102",
                    "BASS_StreamCreateFile http://radio/stream",
                    "BASS_MusicLoad http://radio/stream",
                    "BASS_StreamCreateURL",
                    "BASS_ChannelPlay 0",
                    // no tags on handle 0: the file is asked once more, by the same three attempts
                    "BASS_StreamCreateFile http://radio/stream",
                    "BASS_StreamCreateURL",
                    "BASS_MusicLoad http://radio/stream",
                    "BASS_StreamFree 0",
                    "BASS_MusicFree 0"));
    EXPECT_EQ(m_player.state.CurrentChannel, 0U);
}

TEST_F(PlayTrack, ShowsTheTitleAndStartsTheMonitor)
{
    m_player.tagLibrary.formatTags["/m/song.mp3 %ARTI"] = "Artist";
    m_player.tagLibrary.formatTags["/m/song.mp3 %TITL"] = "Title";
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), "Velmo Player - Artist - Title   ***   ");
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_TRUE(m_player.wmain.imgPositionTicker.Visible);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/song.mp3");

    // Without tags, and without a tag library, it is the file's name.
    m_player.tracks.PlayTrack("/m/other.ogg");
    EXPECT_EQ(m_player.state.CurrentTitleText, "Velmo Player - other   ***   ");
    m_player.tagLibrary.missing = true;
    m_player.settings.WriteSetting("Options", "ConvertUnderscore", "TRUE");
    m_player.AddSound("/m/with_blanks.ogg", {.seconds = 1});
    m_player.tracks.PlayTrack("/m/with_blanks.ogg");
    EXPECT_EQ(m_player.state.CurrentTitleText, "Velmo Player - with blanks   ***   ");
}

TEST_F(PlayTrack, ABadFileIsReportedOnlyBeforeAnythingHasPlayed)
{
    m_player.tracks.PlayTrack("/m/text.mp3");
    EXPECT_TRUE(m_player.errMGR.Visible);
    EXPECT_EQ(m_player.errMGR.txtMessage.Text.Get(),
              "Can't play file.\nUnknown file format or file not audio.\nError code: 5");
    EXPECT_FALSE(m_player.wmain.imgPositionTicker.Visible);
    EXPECT_FALSE(m_player.wmain.imgPositionBar.Visible);
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), IdleTitle);
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);

    m_player.errMGR.Hide();
    m_player.tracks.PlayTrack("/m/song.mp3");
    m_player.tracks.PlayTrack("/m/text.mp3");
    EXPECT_FALSE(m_player.errMGR.Visible);
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), "Velmo Player - text   ***   ");
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled) << "the monitor moves on from the bad file";
}

TEST_F(PlayTrack, ModePlayRewritesTheSelectedEntryWhateverPlays)
{
    m_player.settings.WriteSetting("Options", "ReadTitlesOn", "Play");
    m_player.playlist.pl.Add({.Text = "1. a", .Length = "", .Path = "/m/other.ogg"});
    m_player.tagLibrary.formatTags["/m/other.ogg %TITL"] = "Other%20title";
    m_player.settings.WriteSetting("Options", "Convert%20%", "True");
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Text, "1. Other title");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Length, "01:00") << "the length is that of what plays";

    m_player.settings.WriteSetting("Options", "ShowLengthInPL", "false");
    m_player.settings.WriteSetting("Display", "ShowNumbersInPL", "false");
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Text, "Other title");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Length, "");

    // An entry whose file is gone for now keeps its path.
    m_player.playlist.pl.SetRow(1, {.Text = "x", .Length = "", .Path = "/gone/b.mp3"});
    m_player.tracks.PlayTrack("/m/song.mp3");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Path, "/gone/b.mp3");
}

TEST_F(PlayTrack, APreparedChannelPlaysBesideTheOneBefore)
{
    m_player.playlist.pl.Add({.Text = "1. song", .Length = "", .Path = "/m/song.mp3"});
    m_player.playlist.pl.Add({.Text = "2. other", .Length = "", .Path = "/m/other.ogg"});
    m_player.tracks.PlayTrack("/m/song.mp3");
    m_player.tracks.LoadNextChannel("/m/other.ogg");
    EXPECT_EQ(m_player.bass.channels.at(m_player.state.NextChannel).state, BASS_ACTIVE_STOPPED);

    m_player.state.PlayIndex = 2;
    m_player.tracks.PlayPrepared(m_player.state.NextChannel);
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 2U);
    EXPECT_FALSE(m_player.playlist.pl.IsMarked(1));
    EXPECT_EQ(m_player.state.CurrentFile, "/m/other.ogg");
    EXPECT_EQ(m_player.state.CurrentChannel, 101U);
    EXPECT_EQ(m_player.bass.channels.at(101).state, BASS_ACTIVE_PLAYING);
    EXPECT_EQ(m_player.bass.channels.at(m_player.state.NextChannel).state, BASS_ACTIVE_PLAYING);

    m_player.state.PlayIndex = 0;
    EXPECT_THROW(m_player.tracks.PlayPrepared(m_player.state.NextChannel), std::out_of_range);
}

TEST_F(PlayTrack, FlagsFollowTheSettingsAtEachOpening)
{
    const auto flags = [&] { return ChannelFlags(m_player.settings); };
    EXPECT_EQ(flags(), (OpenFlags{.stream = 0x4000A, .module = 0x40A0A}));
    m_player.settings.WriteSetting("Sound", "Sound3D", "False");
    EXPECT_EQ(flags(), (OpenFlags{.stream = 0x40000, .module = 0x40000}));
    m_player.settings.WriteSetting("Sound", "SA_StereoMode", "16777216 front");
    m_player.settings.WriteSetting("Sound", "SA_MonoMode", "33554432");
    EXPECT_EQ(flags().stream, 0x1040000U);
    m_player.settings.WriteSetting("Sound", "Channel", "MONO");
    EXPECT_EQ(flags().stream, 0x2040000U);

    EXPECT_EQ(DeviceFlags(m_player.settings), 262U);
    m_player.settings.WriteSetting("Sound", "Bits", "8");
    EXPECT_EQ(DeviceFlags(m_player.settings), 263U);
    m_player.settings.WriteSetting("Sound", "SpeakerAssign", "True");
    m_player.settings.WriteSetting("Sound", "Channel", "Stereo");
    EXPECT_EQ(DeviceFlags(m_player.settings), 260U + 1 + 2048);
}

} // namespace
} // namespace velmo
