#include "support/FakeMainWindow.h"
#include "windows/isGlued.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class NeighboursTest : public ::testing::Test
{
protected:
    NeighboursTest()
    {
        m_form.Left = 1500;
        m_form.Top = 3000;
    }

    void Load()
    {
        m_fakes.neighbours.Load();
        m_fakes.gluings = 0;
    }

    static void ExpectBelow(const controls::Form& upper, const controls::Form& lower)
    {
        EXPECT_EQ(lower.Top, upper.Top + upper.Height) << lower.Name << " below " << upper.Name;
        EXPECT_EQ(lower.Left, upper.Left.Get());
    }

    void ExpectNoted(const char* key, const controls::Form& form, const controls::MenuEntry& mark)
    {
        EXPECT_EQ(m_player.settings.ReadSetting("RTM", key, ""), form.Visible ? "True" : "False");
        EXPECT_EQ(mark.Checked, form.Visible);
    }

    void PressShowFX() const { m_form.imgShowFX.MouseUp({.button = controls::MouseButton::Left}); }
    void PressShowListMgr() const
    {
        m_form.imgShowListMgr.MouseUp({.button = controls::MouseButton::Left});
    }

    test::FakePlayer m_player;
    forms::wmain& m_form = m_player.wmain;
    forms::fX& m_fX = m_player.fX;
    test::FakeMainWindow m_fakes{m_player};
    forms::frmListMGR& m_manager = m_fakes.frmListMGR;
};

TEST_F(NeighboursTest, TheLoadPlacesThemRoundTheMainWindow)
{
    Load();
    EXPECT_TRUE(m_player.playlist.Visible && m_fX.Visible && m_manager.Visible);
    EXPECT_TRUE(m_fakes.resources.submnuShowPlaylist.Checked);
    EXPECT_EQ(m_player.playlist.Left, 1500 + 3975);
    EXPECT_EQ(m_player.playlist.Top, 3000);
    ExpectBelow(m_form, m_fX);
    ExpectBelow(m_fX, m_manager);

    m_player.settings.WriteSetting("RTM", "ShowFX", "False");
    Load();
    EXPECT_FALSE(m_fX.Visible);
    EXPECT_FALSE(m_fakes.resources.submnuShowEq.Checked);
    ExpectBelow(m_form, m_manager);
}

TEST_F(NeighboursTest, WhenTheWindowIsBackTheyReturnUnlessTheyAreNotSticky)
{
    Load();
    const auto comeBack = [&] {
        m_player.playlist.Left = 0;
        m_form.State = controls::WindowState::Minimized;
        m_fakes.window.Form_Resize();
        EXPECT_EQ(m_player.playlist.Left, 0);
        m_form.State = controls::WindowState::Normal;
        m_fakes.window.Form_Resize();
    };
    comeBack();
    EXPECT_EQ(m_player.playlist.Left, 1500 + 3975);
    EXPECT_EQ(m_fakes.gluings, 1);
    m_player.settings.WriteSetting("Display", "StickyWindows", "False");
    comeBack();
    EXPECT_EQ(m_player.playlist.Left, 0);
    EXPECT_EQ(m_fakes.gluings, 1);
}

TEST_F(NeighboursTest, TheEqualizerComesBetweenAndLetsTheManagerMoveUp)
{
    Load();
    PressShowFX();
    EXPECT_FALSE(m_fX.Visible);
    ExpectNoted("ShowFX", m_fX, m_fakes.resources.submnuShowEq);
    ExpectBelow(m_form, m_manager);
    PressShowFX();
    EXPECT_TRUE(m_fX.Visible);
    ExpectNoted("ShowFX", m_fX, m_fakes.resources.submnuShowEq);
    ExpectBelow(m_form, m_fX);
    ExpectBelow(m_fX, m_manager);

    // A manager that stands elsewhere stays there.
    m_manager.Left = 9000;
    m_manager.Top = 9000;
    PressShowFX();
    m_fX.Left = 0;
    PressShowFX();
    EXPECT_EQ(m_manager.Left, 9000);
    ExpectBelow(m_form, m_fX);
}

TEST_F(NeighboursTest, TheManagerGoesBelowTheLowestThatIsShown)
{
    Load();
    PressShowListMgr();
    EXPECT_FALSE(m_manager.Visible);
    ExpectNoted("ShowPLMGR", m_manager, m_fakes.resources.submnuShowPlaylistManager);
    m_manager.Left = 0;
    PressShowListMgr();
    ExpectNoted("ShowPLMGR", m_manager, m_fakes.resources.submnuShowPlaylistManager);
    ExpectBelow(m_fX, m_manager);
    m_fX.Top = m_fX.Top + 15;
    PressShowListMgr();
    PressShowListMgr();
    ExpectBelow(m_form, m_manager);
    m_form.imgShowListMgr.MouseUp({.button = controls::MouseButton::Right});
    EXPECT_TRUE(m_manager.Visible) << "the left button only";

    m_fakes.resources.submnuShowPlaylist.Click();
    EXPECT_FALSE(m_player.playlist.Visible);
    ExpectNoted("ShowPL", m_player.playlist, m_fakes.resources.submnuShowPlaylist);
}

/// A window of 100 by 100 at (1000, 1000) and another of that size.
TEST(IsGlued, DependsOnOrderAndPlace)
{
    const struct
    {
        double left1, top1, left2, top2;
        bool glued;
        const char* why;
    } cases[] = {
        {1000, 1000, 1100, 1000, true,  "right neighbour"                        },
        {1000, 1000, 1101, 1000, false, "apart"                                  },
        {1000, 1000, 1100, 2000, true,  "right, and no further down than the top"},
        {1000, 1000, 1100, 2001, false, "right, further down than the top"       },
        {1000, 1000, 1100, -1,   false, "right, above the desktop"               },
        {1000, 1000, 900,  9999, true,  "left neighbour, however far down"       },
        {1000, 1000, 1000, 1100, true,  "below"                                  },
        {1000, 1000, 2001, 1100, false, "below, further right than the left edge"},
        {1000, 1000, 9999, 900,  true,  "above, however far right"               },
        {0,    1000, 1,    1100, false, "at the desktop's edge"                  },
    };
    for (const auto& c : cases) {
        controls::Form one("one", "", 100, 100, controls::BorderStyle::None);
        controls::Form two("two", "", 100, 100, controls::BorderStyle::None);
        one.Left = c.left1;
        one.Top = c.top1;
        two.Left = c.left2;
        two.Top = c.top2;
        EXPECT_EQ(isGlued(one, two), c.glued) << c.why;
    }
}

} // namespace
} // namespace velmo
