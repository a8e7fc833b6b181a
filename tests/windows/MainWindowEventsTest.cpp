#include "core/CallIfSet.h"
#include "core/NumberText.h"
#include "windows/MainWindowFixture.h"

namespace velmo {
namespace {

using controls::Image;
using test::Left;
using test::Right;

class MainWindowUnderTheMouse : public test::MainWindowFixture
{
protected:
    MainWindowUnderTheMouse()
    {
        for (controls::Control* control : m_form.Controls())
            if (auto* image = dynamic_cast<Image*>(control); image && image->States.normal)
                m_images.push_back(image);
    }

    /// The state that each one shows: normal, hover, pressed, or the picture of another image.
    static std::string Looks(const std::vector<const Image*>& images)
    {
        std::string looks;
        for (const Image* image : images) {
            const auto& [normal, pressed, hover] = image->States;
            const controls::PictureRef shown = image->Picture;
            looks += shown == normal ? 'n' : shown == hover ? 'h' : shown == pressed ? 'p' : '?';
        }
        return looks;
    }
    void MoveOver(const std::vector<const Image*>& images)
    {
        for (const Image* image : images)
            image->MouseMove(Left);
    }

    std::vector<const Image*> m_images; ///< those that change under the mouse
};

TEST_F(MainWindowUnderTheMouse, OnePictureOfARowStandsLitUntilTheGroundIsTouched)
{
    MoveOver(m_images);
    std::string lit;
    for (const Image* image : m_images)
        lit += Looks({image}) == "h" ? image->Name + " " : "";
    EXPECT_EQ(lit,
              "imgControl imgMinimize imgClose imgPositionTicker imgK imgVolumeBar "
              "imgVolumeTicker imgShowOptions ")
        << "the last one of either row, and what stands alone";
    for (const auto* ground :
         {&m_form.MouseMove, &m_form.lblBlackBG1.MouseMove, &m_form.lblBlackBG2.MouseMove}) {
        MoveOver(m_images);
        (*ground)(Left);
        EXPECT_EQ(Looks(m_images), std::string(m_images.size(), 'n'));
    }
}

TEST_F(MainWindowUnderTheMouse, APressShowsThePressedPictureByTheLeftButtonMostly)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    std::string byAny;
    for (const Image* image : m_images) {
        image->MouseDown(Right);
        byAny += Looks({image}) == "p" ? image->Name + " " : "";
        image->MouseDown(Left);
        EXPECT_EQ(Looks({image}), "p") << image->Name;
        image->MouseUp({.button = controls::MouseButton::Middle});
        EXPECT_EQ(Looks({image}), image == &m_form.imgOpen ? "?" : "n") << image->Name;
    }
    EXPECT_EQ(byAny, "imgShowPL imgShowFX imgShowDJ imgShowOptions ");
    m_player.transport.Stop();
    m_form.imgPause.MouseDown(Left);
    EXPECT_EQ(Looks({&m_form.imgPause}), "n") << "nothing plays";

    // Open looks like its neighbour until another picture is touched.
    test::Click(m_form.imgOpen);
    EXPECT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    MoveOver({&m_form.imgOpen});
    EXPECT_EQ(m_form.imgOpen.Picture.Get(), m_form.imgNext.States.normal);
    MoveOver({&m_form.imgNext});
    EXPECT_EQ(Looks({&m_form.imgOpen}), "n");
}

TEST_F(MainWindowUnderTheMouse, ASliderThatIsDraggedKeepsItsPictures)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    const std::vector<const Image*> touched = {&m_form.imgVolumeTicker,
                                               &m_form.imgSoundVolume,
                                               &m_form.imgVolumeBar,
                                               &m_form.imgPositionTicker};
    for (const Image* ticker : {&m_form.imgVolumeTicker, &m_form.imgPositionTicker})
        ticker->MouseDown(Left);
    MoveOver(touched);
    m_form.imgPositionBar.MouseMove(Left);
    m_form.MouseMove(Left);
    EXPECT_EQ(Looks(touched), "pnnp");
    for (const Image* ticker : {&m_form.imgVolumeTicker, &m_form.imgPositionTicker})
        ticker->MouseUp(Left);
    MoveOver(touched);
    EXPECT_EQ(Looks(touched), "nnhh");
    for (const auto* display : {&m_form.lblTime.MouseMove,
                                &m_form.lblSongName.MouseMove,
                                &m_form.picVisualisation.MouseMove}) {
        MoveOver({&m_form.imgSoundVolume});
        (*display)(Left);
        EXPECT_EQ(Looks(touched), "nnhh");
    }
}

TEST_F(MainWindowUnderTheMouse, GroundAndTextDragTheWindowAndMenusOpenAtACorner)
{
    std::string done;
    for (controls::Menu* menu : {&m_menus.Menu1, &m_menus.Menu3, &m_menus.Menu4})
        menu->PopUp = [&done, menu](double left, double top) {
            done += menu->Name + " " + PlainNumber(left) + " " + PlainNumber(top);
        };
    m_form.BeginDrag = [&] { done += "drag"; };
    m_form.Left = 1000;
    m_form.Top = 2000;
    const auto expect = [&](const auto& control, const char* byRight, const char* byLeft) {
        for (const auto& event : {Right, Left}) {
            done.clear();
            CallIfSet(control.MouseDown, event);
            control.MouseUp(event);
            EXPECT_EQ(done, event.button == Right.button ? byRight : byLeft) << byRight;
        }
    };
    expect(m_form, "Menu1 1000 2000", "drag");
    expect(m_form.lblBlackBG1, "Menu1 1000 2000", "drag");
    expect(m_form.lblBlackBG2, "Menu1 1000 2000", "drag");
    expect(m_form.lblSongName, "Menu1 1000 2000", "drag");
    expect(m_form.imgPositionBar, "Menu1 1000 2000", "");
    expect(m_form.imgPositionTicker, "Menu1 1000 2000", "");
    expect(m_form.imgControl, "", "Menu1 1000 2000");
    expect(m_form.lblTime, "Menu3 1000 2000", "drag");
    expect(m_form.picVisualisation, "Menu3 1240 2570", "");
    expect(m_form.imgSoundVolume, "Menu4 1000 2000", "");
    expect(m_form.imgVolumeBar, "Menu4 1000 2000", "");
    expect(m_form.imgVolumeTicker, "Menu4 1000 2000", "");
    EXPECT_EQ(m_fakes.mixerProgram.started, 1) << "the left button on the volume's key";
}

TEST_F(MainWindowUnderTheMouse, AlwaysOnTopIsForTheWindowsThatAreThere)
{
    m_form.Loaded = true;
    m_player.playlist.Visible = true;
    for (const bool on : {true, false}) {
        m_menus.submnuAlwaysOnTop.Click();
        EXPECT_EQ(m_form.AlwaysOnTop, on);
        EXPECT_EQ(m_player.playlist.AlwaysOnTop, on);
        EXPECT_FALSE(m_player.errMGR.AlwaysOnTop);
        EXPECT_EQ(m_menus.submnuAlwaysOnTop.Checked, on);
        EXPECT_EQ(m_player.Get("Options", "AlwaysOnTop"), on ? "True" : "False");
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
    EnableBoundEntries(m_menus);
    for (const auto* entry :
         {&m_menus.submnuPlayFile, &m_menus.submnuComponents, &m_menus.submnuStreamInformation})
        EXPECT_TRUE(entry->Enabled) << entry->Name;
    for (const auto* entry : {&m_menus.submnuAbout, &m_menus.submnuFind})
        EXPECT_FALSE(entry->Enabled) << entry->Name;
    m_menus.submnuStreamInformation.Click();
    EXPECT_EQ(called, "dj info");
}

} // namespace
} // namespace velmo
