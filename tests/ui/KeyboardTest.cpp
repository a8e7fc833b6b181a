#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmListMGR.h"
#include "forms/wmain.h"
#include "qt/ControlWidget.h"
#include "ui/ShownView.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace velmo::test {
namespace {

QAccessibleInterface& Accessible(QWidget& widget)
{
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(&widget);
    if (found == nullptr)
        throw std::runtime_error("not accessible");
    return *found;
}

/// Names of everything below `node`; what has none, or only the name that logic gives it, or no
/// role is a failure.
void Walk(QAccessibleInterface& node, std::vector<std::string>& seen)
{
    for (int index = 0; index < node.childCount(); ++index) {
        QAccessibleInterface* const child = node.child(index);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(node.indexOfChild(child), index);
        EXPECT_NE(child->role(), QAccessible::NoRole);
        const std::string name = child->text(QAccessible::Name).toStdString();
        const QObject* const object = child->object();
        EXPECT_FALSE(name.empty()) << "in " << node.text(QAccessible::Name).toStdString();
        EXPECT_TRUE(object == nullptr || name != object->objectName().toStdString()) << name;
        seen.push_back(name);
        Walk(*child, seen);
    }
}

std::vector<std::string> NamesOf(QWidget& view)
{
    std::vector<std::string> names;
    Walk(Accessible(view), names);
    return names;
}

TEST(ScreenReader, FindsEveryControlOfTheWindowsByAName)
{
    using testing::Contains;
    ShownView<forms::wmain> main;
    EXPECT_THAT(NamesOf(main.view), Contains("Volume"));
    ShownView<forms::fX> equalizer;
    EXPECT_THAT(NamesOf(equalizer.view), Contains("16 kHz"));
    ShownView<forms::frmListMGR> manager;
    manager.form.lstLists.Add({.Text = "Evenings", .Length = "", .Path = ""});
    EXPECT_THAT(NamesOf(manager.view), Contains("Evenings"));
    ShownView<forms::Playlist> playlist;
    EXPECT_THAT(NamesOf(playlist.view), Contains("Shuffle"));
    EXPECT_EQ(Accessible(Find(playlist.view, "frameOpen")).role(), QAccessible::NoRole);
}

TEST(ScreenReader, RowsAreChildrenOfTheirListHoweverManyTheyAre)
{
    constexpr int Count = 100'000;
    ShownView<forms::Playlist> shown;
    controls::ListRows& rows = shown.form.pl;
    for (int row = 1; row <= Count; ++row)
        rows.AddTexts({.Text = "title", .Length = "01:00", .Path = ""});
    rows.SetText(Count, "last");
    QAccessibleInterface& list = Accessible(Find(shown.view, "pl"));
    ASSERT_EQ(list.childCount(), Count);
    QAccessibleInterface* const last = list.child(Count - 1);
    EXPECT_EQ(last->text(QAccessible::Name).toStdString(), "last");
    EXPECT_EQ(last->role(), QAccessible::ListItem);
    EXPECT_EQ(last->parent(), &list);
    EXPECT_TRUE(last->state().offscreen && !last->state().selected);
    last->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(rows.SelectedEntry(), std::size_t{Count});
    EXPECT_TRUE(last->state().focused && last->state().selected && !last->state().offscreen);
    EXPECT_EQ(list.focusChild(), last);
    const QPoint middle = last->rect().center();
    EXPECT_EQ(list.childAt(middle.x(), middle.y()), last);
    rows.Remove(1);
    EXPECT_FALSE(last->isValid());
    for (int index = 0; index < 10'000; ++index)
        ASSERT_TRUE(list.child(index)->isValid()); // the oldest ones are let go
}

TEST(ScreenReader, PressesButtonsAndSetsSliders)
{
    ShownView<forms::wmain> shown;
    std::string events;
    shown.form.imgPlay.MouseDown = [&](const auto&) { events += "down "; };
    shown.form.imgPlay.MouseUp = [&](const auto& event) {
        events += "up" + std::to_string(static_cast<int>(event.x));
    };
    auto& play = *Accessible(Find(shown.view, "imgPlay")).actionInterface();
    for (const bool enabled : {true, false}) {
        shown.form.imgPlay.Enabled = enabled;
        ServeEvents();
        play.doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(events, "down up210") << "once, while it was enabled";
    }

    controls::Image& knob = shown.form.imgVolumeTicker;
    double start = 0;
    knob.MouseDown = [&](const auto& event) { start = event.x; };
    knob.MouseMove = [&](const auto& event) { knob.Left = knob.Left + event.x - start; };
    for (const char* name : {"imgVolumeTicker", "imgVolumeBar"}) {
        QAccessibleInterface& slider = Accessible(Find(shown.view, name));
        EXPECT_EQ(slider.role(), QAccessible::Slider);
        slider.valueInterface()->setCurrentValue(50);
        EXPECT_EQ(slider.text(QAccessible::Value).toStdString(), "50%");
        slider.actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
        EXPECT_DOUBLE_EQ(slider.valueInterface()->currentValue().toDouble(), 55);
        slider.valueInterface()->setCurrentValue(500);
        EXPECT_EQ(knob.Left, shown.form.imgVolumeBar.Left + knob.SlideRange());
    }
    EXPECT_EQ(Accessible(Find(shown.view, "lblTime")).text(QAccessible::Value), "00:00");
    EXPECT_EQ(Accessible(Find(shown.view, "imgPlay")).valueInterface(), nullptr);
}

TEST(Keyboard, TabReachesWhatCanBePressedAndTheRingGoesWithTheMouse)
{
    ShownView<forms::wmain> shown;
    std::string keys;
    int presses = 0;
    shown.form.KeyPress = [&](char32_t key) { keys += static_cast<char>(key); };
    shown.form.imgPlay.MouseUp = [&](const auto&) { ++presses; };
    EXPECT_EQ(QApplication::focusWidget(), nullptr) << "no button has the focus yet";
    std::string stops;
    QTest::keyClick(&shown.view, Qt::Key_Tab);
    QWidget* const first = QApplication::focusWidget();
    EXPECT_EQ(shown.view.grab().toImage().pixelColor(60, 37), QColor(0, 255, 255))
        << "the spectrum covers the last row of the time";
    do {
        const auto* stop = dynamic_cast<qt::ControlWidget*>(QApplication::focusWidget());
        ASSERT_NE(stop, nullptr);
        EXPECT_TRUE(stop->IsRingShown());
        stops += stop->objectName().toStdString() + " ";
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first);
    EXPECT_EQ(stops,
              "lblTime picVisualisation imgControl imgMinimize imgClose imgPositionTicker "
              "imgBack imgPlay imgPause imgStop imgOpen imgNext imgK imgSoundVolume "
              "imgVolumeTicker imgShowPL imgShowListMgr imgShowFX imgShowDJ imgShowOptions ");
    QWidget& play = Find(shown.view, "imgPlay");
    play.setFocus(Qt::TabFocusReason);
    ServeEvents();
    EXPECT_EQ(play.grab().toImage().pixelColor(0, 5), QColor(0, 255, 255));
    keys.clear();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_N})
        QTest::keyClick(&play, key);
    EXPECT_EQ(presses, 3);
    for (const Qt::KeyboardModifier others : {Qt::AltModifier, Qt::MetaModifier})
        QTest::keyClick(&play, Qt::Key_X, others);
    EXPECT_EQ(keys, "n") << "letters are the form's, but for the desktop's own";

    QTest::mouseClick(&Find(shown.view, "imgStop"), Qt::LeftButton);
    ServeEvents();
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
    EXPECT_NE(play.grab().toImage().pixelColor(0, 5), QColor(0, 255, 255));
}

TEST(Keyboard, ArrowsMoveABandByItsStepsAsAHandWould)
{
    ShownView<forms::fX> shown;
    controls::Image& ticker = shown.form.Ticker[2];
    const controls::Image& bar = shown.form.Bar[2];
    double start = 0;
    int drags = 0;
    ticker.MouseDown = [&](const auto& event) { start = event.y; };
    ticker.MouseMove = [&](const auto& event) {
        const double top = ticker.Top - start + event.y;
        if (top > bar.Top && top <= bar.Top + bar.Height - ticker.Height)
            ticker.Top = top;
    };
    ticker.MouseUp = [&](const auto& event) {
        EXPECT_EQ(event.y, start) << "the knob has gone along";
        ++drags;
    };
    const auto topAfter = [&](Qt::Key key) {
        QTest::keyClick(&Find(shown.view, "Ticker3"), key);
        return ticker.Top.Get();
    };
    EXPECT_EQ(topAfter(Qt::Key_Up), 668);
    EXPECT_EQ(topAfter(Qt::Key_Left), 700);
    EXPECT_EQ(topAfter(Qt::Key_PageDown), 828);
    EXPECT_EQ(topAfter(Qt::Key_End), 361) << "next to the end that it refuses";
    EXPECT_EQ(topAfter(Qt::Key_Home), 1000);
    EXPECT_EQ(topAfter(Qt::Key_Home), 1000);
    EXPECT_EQ(drags, 5) << "not where there is no way to go";
}

TEST(Keyboard, BelongsToTheListWhereThereIsOne)
{
    ShownView<forms::Playlist> shown;
    QWidget& list = Find(shown.view, "pl");
    QWidget& save = Find(shown.view, "imgSave");
    EXPECT_EQ(QApplication::focusWidget(), &list);
    save.setFocus(Qt::TabFocusReason);
    QTest::mouseClick(&Find(shown.view, "imgClear"), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    save.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&save, Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &list);
}

} // namespace
} // namespace velmo::test
