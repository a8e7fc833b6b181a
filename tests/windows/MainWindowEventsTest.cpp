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
    MainWindowUnderTheMouse()
    {
        m_player.AddSound("/m/a.mp3", {.seconds = 100});
        for (controls::Control* control : m_form.Controls())
            if (auto* image = dynamic_cast<Image*>(control); image && image->States.normal)
                m_images.push_back(image);
    }

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
    std::vector<Image*> m_images; ///< those that change under the mouse
};

TEST_F(MainWindowUnderTheMouse, OnePictureOfARowStandsLitUntilTheGroundIsTouched)
{
    for (const Image* image : m_images)
        image->MouseMove(Left);
    std::string lit;
    for (const Image* image : m_images)
        lit += ShowsHover(*image) ? image->Name + " " : "";
    EXPECT_EQ(lit,
              "imgControl imgMinimize imgClose imgPositionTicker imgK imgVolumeBar "
              "imgVolumeTicker imgShowOptions ")
        << "the last one of either row, and what stands alone";
    for (const auto* ground :
         {&m_form.MouseMove, &m_form.lblBlackBG1.MouseMove, &m_form.lblBlackBG2.MouseMove}) {
        for (const Image* image : m_images)
            image->MouseMove(Left);
        (*ground)(Left);
        for (const Image* image : m_images)
            EXPECT_TRUE(ShowsNormal(*image)) << image->Name;
    }
}

TEST_F(MainWindowUnderTheMouse, APressShowsThePressedPictureByTheLeftButtonMostly)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    std::string byAny;
    for (const Image* image : m_images) {
        image->MouseDown(Right);
        if (ShowsPressed(*image))
            byAny += image->Name + " ";
        image->MouseDown(Left);
        EXPECT_TRUE(ShowsPressed(*image)) << image->Name;
        image->MouseUp({.button = MouseButton::Middle});
        EXPECT_EQ(ShowsNormal(*image), image != &m_form.imgOpen) << image->Name;
    }
    EXPECT_EQ(byAny, "imgShowPL imgShowFX imgShowDJ imgShowOptions ");
    m_player.transport.Stop();
    m_form.imgPause.MouseDown(Left);
    EXPECT_TRUE(ShowsNormal(m_form.imgPause)) << "nothing plays";
}

TEST_F(MainWindowUnderTheMouse, OpenLooksLikeItsNeighbourUntilAnotherPictureIsTouched)
{
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
    const auto moveOverAll = [&] {
        m_form.imgVolumeTicker.MouseMove(Left);
        m_form.imgSoundVolume.MouseMove(Left);
        m_form.imgVolumeBar.MouseMove(Left);
        m_form.imgPositionTicker.MouseMove(Left);
        m_form.imgPositionBar.MouseMove(Left);
    };
    moveOverAll();
    m_form.MouseMove(Left);
    EXPECT_TRUE(ShowsPressed(m_form.imgVolumeTicker));
    EXPECT_TRUE(ShowsPressed(m_form.imgPositionTicker));
    EXPECT_FALSE(ShowsHover(m_form.imgVolumeBar));

    m_form.imgVolumeTicker.MouseUp(Left);
    m_form.imgPositionTicker.MouseUp(Left);
    moveOverAll();
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
            opened = menu->Name + " " + std::to_string(std::lround(left)) + " "
                     + std::to_string(std::lround(top));
        };
    m_form.Left = 1000;
    m_form.Top = 2000;
    const auto expect = [&](const auto& control, const char* byRight, const char* byLeft) {
        opened.clear();
        control.MouseUp(Right);
        EXPECT_EQ(opened, byRight);
        opened.clear();
        control.MouseUp(Left);
        EXPECT_EQ(opened, byLeft) << byRight;
    };
    expect(m_form, "Menu1 1000 2000", "");
    expect(m_form.lblBlackBG1, "Menu1 1000 2000", "");
    expect(m_form.lblBlackBG2, "Menu1 1000 2000", "");
    expect(m_form.lblSongName, "Menu1 1000 2000", "");
    expect(m_form.imgPositionBar, "Menu1 1000 2000", "");
    expect(m_form.imgPositionTicker, "Menu1 1000 2000", "");
    expect(m_form.imgControl, "", "Menu1 1000 2000");
    expect(m_form.lblTime, "Menu3 1000 2000", "");
    expect(m_form.picVisualisation, "Menu3 1240 2570", "");
    expect(m_form.imgSoundVolume, "Menu4 1000 2000", "");
    expect(m_form.imgVolumeBar, "Menu4 1000 2000", "");
    expect(m_form.imgVolumeTicker, "Menu4 1000 2000", "");
    EXPECT_EQ(m_fakes.mixerProgram.started, 1) << "the left button on the volume's key";
}

TEST_F(MainWindowUnderTheMouse, TheWindowIsDraggedByItsGroundAndItsText)
{
    int drags = 0;
    m_form.BeginDrag = [&] { ++drags; };
    for (const auto* ground : {&m_form.MouseDown,
                               &m_form.lblBlackBG1.MouseDown,
                               &m_form.lblBlackBG2.MouseDown,
                               &m_form.lblSongName.MouseDown,
                               &m_form.lblTime.MouseDown}) {
        (*ground)(Left);
        (*ground)(Right);
    }
    EXPECT_EQ(drags, 5);
}

TEST_F(MainWindowUnderTheMouse, AlwaysOnTopIsForTheWindowsThatAreThere)
{
    m_form.Loaded = true;
    m_player.playlist.Visible = true;
    for (const bool on : {true, false}) {
        m_fakes.resources.submnuAlwaysOnTop.Click();
        EXPECT_EQ(m_form.AlwaysOnTop, on);
        EXPECT_EQ(m_player.playlist.AlwaysOnTop, on);
        EXPECT_FALSE(m_player.errMGR.AlwaysOnTop);
        EXPECT_EQ(m_fakes.resources.submnuAlwaysOnTop.Checked, on);
        EXPECT_EQ(m_player.settings.ReadSetting("Options", "AlwaysOnTop", ""),
                  on ? "True" : "False");
    }
}

TEST_F(MainWindowUnderTheMouse, OnlyEntriesThatDoSomethingCanBeChosen)
{
    std::string called;
    m_form.imgShowDJ.MouseUp(Left); // no such window
    m_fakes.calls.ShowDj = [&] { called += "dj "; };
    m_form.imgShowDJ.MouseUp(Right);
    m_fakes.calls.ShowSinfo = [&] { called += "info"; };
    m_fakes.menus.Bind();
    EnableBoundEntries(m_fakes.resources);
    const forms::frmResources& menus = m_fakes.resources;
    for (const auto* entry :
         {&menus.submnuPlayFile, &menus.submnuComponents, &menus.submnuStreamInformation})
        EXPECT_TRUE(entry->Enabled) << entry->Name;
    for (const auto* entry : {&menus.submnuAbout, &menus.submnuControlCenter, &menus.submnuFind})
        EXPECT_FALSE(entry->Enabled) << entry->Name;
    menus.submnuStreamInformation.Click();
    EXPECT_EQ(called, "dj info");
}

} // namespace
} // namespace velmo
