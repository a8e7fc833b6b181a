#include "qt/MenuView.h"

#include "forms/Playlist.h"
#include "forms/frmResources.h"
#include "ui/ShownView.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScreen>

#include <gmock/gmock.h>

namespace velmo::test {
namespace {

QAction& ActionOf(const QMenu& menu, const char* name)
{
    for (QAction* action : menu.actions())
        if (action->objectName() == QString::fromUtf8(name))
            return *action;
    throw std::runtime_error(std::string("no entry ") + name);
}

TEST(MenuView, IsMadeWhenFirstOpenedAndFollowsItsEntries)
{
    forms::frmResources form;
    const qt::MenuView view(form.Menu1);
    EXPECT_EQ(view.Popup(), nullptr);
    int clicks = 0;
    form.submnuShowEq.Click = [&] { ++clicks; };
    form.submnuShowEq.Checked = true;
    form.Menu1.PopUp(1500, 1500);
    const QMenu& popup = *view.Popup();
    EXPECT_TRUE(popup.isVisible());
    EXPECT_EQ(popup.pos(), QPoint(100, 100));
    EXPECT_EQ(popup.actions().size(), 13);
    EXPECT_TRUE(ActionOf(popup, "submnu_LineBreak1").isSeparator());
    EXPECT_EQ(ActionOf(popup, "submnuAbout").text().toStdString(), "&Velmo Player..");
    QAction& showEq = ActionOf(*ActionOf(popup, "submnuComponents").menu(), "submnuShowEq");
    EXPECT_TRUE(showEq.isChecked());
    showEq.trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(showEq.isChecked()) << "the mark is its owner's";
    form.submnuShowEq.Checked = false;
    form.submnuShowEq.Enabled = false;
    form.submnuAbout.Caption = "Else";
    EXPECT_FALSE(showEq.isChecked() || showEq.isEnabled());
    EXPECT_EQ(ActionOf(popup, "submnuAbout").text().toStdString(), "Else");
    view.Popup()->close();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    form.Menu1.PopUp(screen.width() * 15.0 - 15, screen.height() * 15.0 - 15);
    EXPECT_TRUE(screen.contains(popup.geometry()));
    view.Popup()->close();
}

TEST(MenuView, KeysOpenTheMenuOfAListAtTheRowWithTheFocus)
{
    ShownView<forms::Playlist> shown;
    forms::frmResources form;
    const qt::MenuView view(form.Menu2);
    shown.form.pl.MouseUp = [&](const controls::MouseEvent& event) {
        if (event.button == controls::MouseButton::Right)
            form.Menu2.PopUpAtPointer();
    };
    for (int row = 0; row < 5; ++row)
        shown.form.pl.Add({});
    shown.form.pl.Choose(4, controls::Marking::Toggle);
    shown.form.pl.Choose(5, controls::Marking::Toggle);
    QWidget& list = Find(shown.view, "pl");
    const int under = list.mapToGlobal(QPoint(0, 5 * 14)).y();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    const std::function<void()> openings[] = {
        [&] { QTest::keyClick(&list, Qt::Key_F10, Qt::ShiftModifier); },
        [&] { QApplication::sendEvent(&list, &menuKey); },
    };
    for (const auto& open : openings) {
        open();
        ASSERT_TRUE(view.Popup() != nullptr && view.Popup()->isVisible());
        EXPECT_NEAR(view.Popup()->y(), under, 2);
        EXPECT_EQ(shown.form.pl.MarkedCount(), 2U);
        view.Popup()->close();
    }
    QTest::mouseClick(&list, Qt::RightButton, {}, {10, 10});
    EXPECT_EQ(view.Popup()->pos(), QCursor::pos());
    view.Popup()->close();
}

} // namespace
} // namespace velmo::test
