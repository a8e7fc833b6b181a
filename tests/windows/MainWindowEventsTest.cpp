#include "support/FakeMainWindow.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using controls::Image;
using controls::MouseButton;
using controls::MouseEvent;
using controls::PictureList;
using controls::PictureRef;

constexpr MouseEvent Left{.button = MouseButton::Left, .shift = 0, .x = 10, .y = 10};
constexpr MouseEvent Right{.button = MouseButton::Right, .shift = 0, .x = 10, .y = 10};

class MainWindowUnderTheMouse : public ::testing::Test
{
protected:
    MainWindowUnderTheMouse() { m_player.AddSound("/m/a.mp3", {.seconds = 100}); }

    static bool ShowsNormal(const Image& image)
    {
        return image.Picture.Get() == image.States.normal;
    }
    static bool ShowsHover(const Image& image) { return image.Picture.Get() == image.States.hover; }
    static bool ShowsPressed(const Image& image)
    {
        return image.Picture.Get() == image.States.pressed;
    }

    test::FakePlayer m_player;
    forms::wmain& m_form = m_player.wmain;
    test::FakeMainWindow m_fakes{m_player};
    std::vector<Image*> m_transport{&m_form.imgBack,
                                    &m_form.imgPlay,
                                    &m_form.imgPause,
                                    &m_form.imgStop,
                                    &m_form.imgOpen,
                                    &m_form.imgNext,
                                    &m_form.imgK};
    std::vector<Image*> m_windows{&m_form.imgShowPL,
                                  &m_form.imgShowListMgr,
                                  &m_form.imgShowDJ,
                                  &m_form.imgShowFX,
                                  &m_form.imgShowOptions};
    std::vector<Image*> m_others{&m_form.imgClose,
                                 &m_form.imgControl,
                                 &m_form.imgMinimize,
                                 &m_form.imgSoundVolume,
                                 &m_form.imgVolumeBar,
                                 &m_form.imgVolumeTicker,
                                 &m_form.imgPositionTicker};
    const std::vector<std::vector<Image*>> m_groups{m_transport, m_windows, m_others};
};

TEST_F(MainWindowUnderTheMouse, OnePictureOfARowStandsLitUntilTheGroundIsTouched)
{
    for (const auto& row : {m_transport, m_windows})
        for (Image* lit : row) {
            lit->MouseMove(Left);
            for (const Image* image : row)
                EXPECT_EQ(ShowsHover(*image), image == lit) << image->Name;
        }
    m_form.imgClose.MouseMove(Left);
    EXPECT_TRUE(ShowsHover(*m_windows.back())) << "what stands outside the row lets it be";
    for (const auto* ground :
         {&m_form.MouseMove, &m_form.lblBlackBG1.MouseMove, &m_form.lblBlackBG2.MouseMove}) {
        for (const auto& group : m_groups)
            for (Image* image : group)
                image->MouseMove(Left);
        (*ground)(Left);
        for (const auto& group : m_groups)
            for (const Image* image : group)
                EXPECT_TRUE(ShowsNormal(*image)) << image->Name;
    }
}

TEST_F(MainWindowUnderTheMouse, APressShowsThePressedPictureByTheLeftButtonMostly)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    for (const auto& group : m_groups)
        for (Image* image : group) {
            image->MouseDown(Right);
            const bool byAny = &group == &m_groups[1] && image != &m_form.imgShowListMgr;
            EXPECT_EQ(ShowsPressed(*image), byAny) << image->Name;
            image->MouseDown(Left);
            EXPECT_TRUE(ShowsPressed(*image)) << image->Name;
            if (image == &m_form.imgOpen)
                continue;
            image->MouseUp(MouseEvent{.button = MouseButton::Middle});
            EXPECT_TRUE(ShowsNormal(*image)) << image->Name;
        }
    m_player.transport.Stop();
    m_form.imgPause.MouseDown(Left);
    EXPECT_TRUE(ShowsNormal(m_form.imgPause)) << "nothing plays";
}

TEST_F(MainWindowUnderTheMouse, OpenLooksLikeItsNeighbourUntilAnotherPictureIsTouched)
{
    m_form.imgOpen.MouseMove(Left);
    m_form.imgOpen.MouseDown(Left);
    m_form.imgOpen.MouseUp(Left);
    EXPECT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    m_form.imgOpen.MouseMove(Left);
    EXPECT_EQ(m_form.imgOpen.Picture.Get(), (PictureRef{PictureList::wmain, 23}));
    m_form.imgNext.MouseMove(Left);
    EXPECT_TRUE(ShowsNormal(m_form.imgOpen));
}

TEST_F(MainWindowUnderTheMouse, ASliderThatIsDraggedKeepsItsPictures)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_form.imgVolumeTicker.MouseDown(Left);
    m_form.imgPositionTicker.MouseDown(Left);
    for (Image* image : {&m_form.imgVolumeTicker, &m_form.imgPositionTicker})
        image->MouseMove(Left);
    m_form.imgVolumeBar.MouseMove(Left);
    m_form.imgPositionBar.MouseMove(Left);
    m_form.MouseMove(Left);
    EXPECT_TRUE(ShowsPressed(m_form.imgVolumeTicker));
    EXPECT_TRUE(ShowsPressed(m_form.imgPositionTicker));
    EXPECT_FALSE(ShowsHover(m_form.imgVolumeBar));

    m_form.imgVolumeTicker.MouseUp(Left);
    m_form.imgPositionTicker.MouseUp(Left);
    m_form.imgVolumeTicker.MouseMove(Left);
    m_form.imgSoundVolume.MouseMove(Left);
    m_form.imgVolumeBar.MouseMove(Left);
    m_form.imgPositionBar.MouseMove(Left);
    EXPECT_TRUE(ShowsHover(m_form.imgVolumeBar));
    EXPECT_TRUE(ShowsNormal(m_form.imgVolumeTicker));
    EXPECT_TRUE(ShowsNormal(m_form.imgSoundVolume));
    EXPECT_TRUE(ShowsHover(m_form.imgPositionTicker));
    for (const auto* display : {&m_form.lblTime.MouseMove,
                                &m_form.lblSongName.MouseMove,
                                &m_form.picVisualisation.MouseMove}) {
        m_form.imgSoundVolume.MouseMove(Left);
        (*display)(Left);
        EXPECT_TRUE(ShowsNormal(m_form.imgSoundVolume));
        EXPECT_TRUE(ShowsHover(m_form.imgVolumeBar));
    }
}

TEST_F(MainWindowUnderTheMouse, MenusOpenAtTheWindowsCornerOrThatOfABox)
{
    std::string opened;
    for (controls::Menu* menu :
         {&m_fakes.resources.Menu1, &m_fakes.resources.Menu3, &m_fakes.resources.Menu4})
        menu->PopUp = [&opened, menu](double left, double top) {
            opened = menu->Name + " " + std::to_string(static_cast<int>(left)) + " "
                     + std::to_string(static_cast<int>(top));
        };
    m_form.Left = 1000;
    m_form.Top = 2000;
    const struct
    {
        const std::function<void(const MouseEvent&)>& release;
        const char* byRight;
        const char* byLeft;
    } cases[] = {
        {m_form.MouseUp,                   "Menu1 1000 2000", ""               },
        {m_form.lblBlackBG1.MouseUp,       "Menu1 1000 2000", ""               },
        {m_form.lblBlackBG2.MouseUp,       "Menu1 1000 2000", ""               },
        {m_form.lblSongName.MouseUp,       "Menu1 1000 2000", ""               },
        {m_form.imgPositionBar.MouseUp,    "Menu1 1000 2000", ""               },
        {m_form.imgPositionTicker.MouseUp, "Menu1 1000 2000", ""               },
        {m_form.imgControl.MouseUp,        "",                "Menu1 1000 2000"},
        {m_form.lblTime.MouseUp,           "Menu3 1000 2000", ""               },
        {m_form.picVisualisation.MouseUp,  "Menu3 1240 2570", ""               },
        {m_form.imgSoundVolume.MouseUp,    "Menu4 1000 2000", ""               },
        {m_form.imgVolumeBar.MouseUp,      "Menu4 1000 2000", ""               },
        {m_form.imgVolumeTicker.MouseUp,   "Menu4 1000 2000", ""               },
    };
    for (const auto& c : cases) {
        opened.clear();
        c.release(Right);
        EXPECT_EQ(opened, c.byRight);
        opened.clear();
        c.release(Left);
        EXPECT_EQ(opened, c.byLeft) << c.byRight;
    }
    EXPECT_EQ(m_fakes.mixerProgram.started, 1) << "the left button on the volume's key";
}

TEST_F(MainWindowUnderTheMouse, TheWindowIsDraggedByItsGroundAndEndsByItsKey)
{
    int drags = 0;
    int exits = 0;
    m_form.BeginDrag = [&] { ++drags; };
    m_fakes.calls.ExitProgram = [&] { ++exits; };
    for (const auto* ground : {&m_form.MouseDown,
                               &m_form.lblBlackBG1.MouseDown,
                               &m_form.lblBlackBG2.MouseDown,
                               &m_form.lblSongName.MouseDown,
                               &m_form.lblTime.MouseDown}) {
        (*ground)(Left);
        (*ground)(Right);
    }
    EXPECT_EQ(drags, 5);
    EXPECT_FALSE(m_player.state.TimeElapsedMode);

    m_form.imgClose.MouseUp({.button = MouseButton::Left, .shift = 0, .x = 196, .y = 10});
    EXPECT_EQ(exits, 0);
    m_form.imgClose.MouseUp(Left);
    EXPECT_EQ(exits, 1);
    m_form.imgShowDJ.MouseUp(Left); // no such window
    m_fakes.calls.ShowDj = [&] { ++exits; };
    m_form.imgShowDJ.MouseUp(Right);
    EXPECT_EQ(exits, 2);
}

TEST_F(MainWindowUnderTheMouse, AlwaysOnTopIsForTheWindowsThatAreThere)
{
    m_form.Loaded = true;
    m_player.playlist.Visible = true;
    const auto states = [&] {
        return std::vector<bool>{
            m_form.AlwaysOnTop, m_player.playlist.AlwaysOnTop, m_player.errMGR.AlwaysOnTop};
    };
    m_fakes.resources.submnuAlwaysOnTop.Click();
    EXPECT_THAT(states(), ::testing::ElementsAre(true, true, false));
    EXPECT_TRUE(m_fakes.resources.submnuAlwaysOnTop.Checked);
    EXPECT_EQ(m_player.settings.ReadSetting("Options", "AlwaysOnTop", ""), "True");
    m_fakes.resources.submnuAlwaysOnTop.Click();
    EXPECT_THAT(states(), ::testing::ElementsAre(false, false, false));
    EXPECT_EQ(m_player.settings.ReadSetting("Options", "AlwaysOnTop", ""), "False");
}

TEST_F(MainWindowUnderTheMouse, OnlyEntriesThatDoSomethingCanBeChosen)
{
    m_fakes.calls.ShowSinfo = [] {};
    m_fakes.menus.Bind();
    EnableBoundEntries(m_fakes.resources);
    const forms::frmResources& menus = m_fakes.resources;
    for (const auto* entry : {&menus.submnuPlayFile,
                              &menus.submnuComponents,
                              &menus.submnuShowEq,
                              &menus.submnuStreamInformation,
                              &menus.STMin})
        EXPECT_TRUE(entry->Enabled) << entry->Name;
    for (const auto* entry : {&menus.submnuAbout, &menus.submnuControlCenter, &menus.submnuFind})
        EXPECT_FALSE(entry->Enabled) << entry->Name;
    menus.STMin.Click();
    EXPECT_EQ(m_form.State.Get(), controls::WindowState::Minimized);
    menus.STMax.Click();
    EXPECT_EQ(m_form.State.Get(), controls::WindowState::Normal);
    menus.submnuTimeMode.Click();
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "TimeMode", ""), "False");
}

} // namespace
} // namespace velmo
