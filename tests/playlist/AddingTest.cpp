#include "playlist/TitleReader.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

class AddPath : public ::testing::Test
{
protected:
    AddPath()
    {
        for (const char* path : {"/m/a_b.mp3", "/m/notes.txt", "/m/sub/cd.XM", "/m/d.flac"})
            m_player.files.files[path] = "";
        m_player.files.directories = {"/m"};
    }

    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (std::size_t row = 1; row <= m_player.playlist.pl.Count(); ++row)
            texts.push_back(m_player.playlist.pl.Row(row).Text);
        return texts;
    }

    test::FakePlayer m_player;
};

TEST_F(AddPath, FilesOfKnownKindsJoinTheEndAndRowOneIsMarked)
{
    using ::testing::ElementsAre;
    m_player.adding.AddPath("/m/notes.txt");
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled) << "nothing was added";
    m_player.settings.WriteSetting("Options", "ReadTitlesOn", "play");
    m_player.adding.AddPath("/m/d.flac");
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled) << "the reader belongs to mode display";
    m_player.playlist.pl.Clear();
    m_player.settings.WriteSetting("Options", "ReadTitlesOn", "Display");
    m_player.adding.AddPath("/m/d.flac");
    EXPECT_TRUE(m_player.playlist.tmrInfo.Enabled);
    m_player.settings.WriteSetting("Options", "ConvertUnderscore", "True");
    m_player.adding.AddPath("/m");
    m_player.settings.WriteSetting("Options", "RecureLocation", "False");
    m_player.settings.WriteSetting("Display", "ShowNumbersInPL", "False");
    m_player.adding.AddPath("/m");
    m_player.adding.AddPath("/m/notes.txt");
    m_player.adding.AddPath("");
    EXPECT_THAT(Texts(), ElementsAre("1. d.", "2. a b", "3. d.", "4. c", "a b", "d."));
    EXPECT_TRUE(m_player.playlist.pl.IsMarked(1));
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 1U);
    EXPECT_THROW(m_player.adding.AddPath("/gone.mp3"), RunError);
}

TEST_F(AddPath, AHandedOverFileReplacesTheListOnlyIfTheSettingsSaySo)
{
    m_player.adding.EnqueueFromCommandLine("/m/d.flac");
    m_player.adding.EnqueueFromCommandLine("/m/a_b.mp3");
    EXPECT_EQ(m_player.playlist.pl.Count(), 2U);
    m_player.settings.WriteSetting("Files", "EnqueueAsDefaultAction", "FALSE");
    m_player.adding.EnqueueFromCommandLine("/m/sub/cd.XM");
    EXPECT_EQ(Texts(), std::vector<std::string>{"1. c"});
}

TEST(TitleReader, TheFirstTickStartsTheFileOfTheCommandLineOnce)
{
    struct Starter final : TrackStarter
    {
        bool HasChannel() const override { return !started.empty(); }
        void PlayTrack(const std::string& path) override { started.push_back(path); }
        std::vector<std::string> started;
    };
    Starter starter;
    forms::Playlist playlist;
    playlist.pl.Add({.Text = "1. a", .Length = "", .Path = "/m/a.mp3"});

    TitleReader withoutCommandLine(playlist, starter, "");
    playlist.tmrInfo.Enabled = true;
    withoutCommandLine.tmrInfo_Timer();
    EXPECT_TRUE(starter.started.empty());
    EXPECT_FALSE(playlist.tmrInfo.Enabled);

    TitleReader reader(playlist, starter, "/m/a.mp3");
    reader.tmrInfo_Timer();
    reader.tmrInfo_Timer();
    EXPECT_EQ(starter.started, std::vector<std::string>{"/m/a.mp3"});
}

} // namespace
} // namespace velmo
