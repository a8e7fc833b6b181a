#include "windows/MainWindowFixture.h"
#include "windows/isGlued.h"

namespace velmo {
namespace {

class NeighboursTest : public test::MainWindowFixture
{
protected:
    NeighboursTest()
    {
        m_form.Left = 1500;
        m_form.Top = 3000;
        m_fakes.neighbours.Load();
        m_fakes.gluings = 0;
    }

    static void ExpectBelow(const controls::Form& upper, const controls::Form& lower)
    {
        EXPECT_EQ(lower.Top, upper.Top + upper.Height) << lower.Name << " below " << upper.Name;
        EXPECT_EQ(lower.Left, upper.Left.Get());
    }

    /// Presses the key; the form is to be shown or hidden by that, and settings and menu to know.
    void Press(const controls::Image& image,
               const controls::Form& form,
               const char* key,
               const controls::MenuEntry& mark)
    {
        const bool before = form.Visible;
        EXPECT_EQ(mark.Checked, before);
        image.MouseUp(test::Left);
        EXPECT_NE(form.Visible, before);
        EXPECT_EQ(m_player.Get("RTM", key), before ? "False" : "True");
        EXPECT_NE(mark.Checked, before);
    }
    void PressShowFX() { Press(m_form.imgShowFX, m_fX, "ShowFX", m_menus.submnuShowEq); }
    void PressShowListMgr()
    {
        Press(m_form.imgShowListMgr, m_manager, "ShowPLMGR", m_menus.submnuShowPlaylistManager);
    }

    forms::fX& m_fX = m_player.fX;
    forms::frmListMGR& m_manager = m_fakes.frmListMGR;
};

TEST_F(NeighboursTest, AHiddenEqualizerLeavesNoGapAtTheLoad)
{
    m_player.Set("RTM", "ShowFX", "False");
    m_fakes.neighbours.Load();
    EXPECT_FALSE(m_fX.Visible);
    ExpectBelow(m_form, m_manager);
}

TEST_F(NeighboursTest, WhenTheWindowIsBackTheyReturnUnlessTheyAreNotSticky)
{
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
    m_player.Set("Display", "StickyWindows", "False");
    comeBack();
    EXPECT_EQ(m_player.playlist.Left, 0);
    EXPECT_EQ(m_fakes.gluings, 1);
}

TEST_F(NeighboursTest, TheEqualizerComesBetweenAndLetsTheManagerMoveUp)
{
    PressShowFX();
    ExpectBelow(m_form, m_manager);
    PressShowFX();
    ExpectBelow(m_form, m_fX);
    ExpectBelow(m_fX, m_manager);
    EXPECT_EQ(m_fakes.gluings, 2);

    // A manager that stands elsewhere stays there, also with the equalizer.
    const double top = m_manager.Top + 30;
    m_fX.Top = m_fX.Top + 30;
    m_manager.Top = top;
    PressShowFX();
    EXPECT_EQ(m_manager.Top, top);
    PressShowFX();
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
    PressShowListMgr();
    m_manager.Left = 0;
    PressShowListMgr();
    ExpectBelow(m_fX, m_manager);
    m_fX.Top = m_fX.Top + 15;
    PressShowListMgr();
    PressShowListMgr();
    ExpectBelow(m_form, m_manager);
    m_form.imgShowListMgr.MouseUp(test::Right);
    EXPECT_TRUE(m_manager.Visible) << "the left button only";
    Press(m_form.imgShowPL, m_player.playlist, "ShowPL", m_menus.submnuShowPlaylist);
}

TEST(IsGlued, DependsOnOrderAndPlace)
{
    /// Two windows of 100 by 100, by their corners.
    const auto glued = [](double left1, double top1, double left2, double top2) {
        controls::Form one("one", "", 100, 100, controls::BorderStyle::None);
        controls::Form two("two", "", 100, 100, controls::BorderStyle::None);
        one.Left = left1;
        one.Top = top1;
        two.Left = left2;
        two.Top = top2;
        return isGlued(one, two);
    };
    EXPECT_FALSE(glued(1000, 1000, 1101, 1000)) << "apart";
    EXPECT_TRUE(glued(1000, 1000, 1100, 2000)) << "right, and no further down than the top";
    EXPECT_FALSE(glued(1000, 1000, 1100, 2001)) << "right, further down than the top";
    EXPECT_FALSE(glued(1000, 1000, 1100, -1)) << "right, above the desktop";
    EXPECT_TRUE(glued(1000, 1000, 900, 9999)) << "left neighbour, however far down";
    EXPECT_TRUE(glued(1000, 1000, 1000, 1100)) << "below";
    EXPECT_FALSE(glued(1000, 1000, 2001, 1100)) << "below, further right than the left edge";
    EXPECT_TRUE(glued(1000, 1000, 9999, 900)) << "above, however far right";
    EXPECT_FALSE(glued(0, 1000, 1, 1100)) << "at the desktop's edge";
}

} // namespace
} // namespace velmo
