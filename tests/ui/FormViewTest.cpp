#include "forms/ErrMGR.h"
#include "forms/frmAddLocation.h"
#include "forms/frmListMGR.h"
#include "forms/frmSplash.h"
#include "forms/wmain.h"
#include "ui/SmallForm.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

#include <gmock/gmock.h>

#include <stdexcept>

namespace velmo::test {
namespace {

using controls::MouseEvent;

TEST(FormView, EveryControlThatCanBeSeenIsAWidgetWithAnAccessibleName)
{
    forms::wmain main;
    forms::ErrMGR error;
    forms::frmSplash splash;
    forms::frmAddLocation location;
    controls::Form* const forms[] = {&main, &error, &splash, &location};
    for (controls::Form* form : forms) {
        const qt::FormView view(*form);
        EXPECT_EQ(view.objectName().toStdString(), form->Name);
        form->Show();
        ASSERT_TRUE(WaitUntil([&] { return view.isVisible(); }));
        EXPECT_EQ(view.windowTitle().toStdString(), form->Caption.Get());
        for (const controls::Control* control : form->Controls()) {
            if (control->Kind == controls::ControlKind::Timer)
                continue;
            QWidget& widget = Find(view, control->Name.c_str());
            const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
            ASSERT_NE(accessible, nullptr);
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << control->Name;
        }
        form->Hide();
    }
}

TEST(FormView, WhatIsTypedInAFieldReachesTheFormAndAButtonIsPressedByKey)
{
    forms::frmAddLocation form;
    const qt::FormView view(form);
    int clicks = 0;
    form.btnAdd.Click = [&] { ++clicks; };
    form.txtName.Text = std::string("old");
    form.Show();
    ASSERT_TRUE(WaitUntil([&] { return view.isVisible(); }));
    ServeEvents();
    auto* const field = Find(view, "txtName").findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text().toStdString(), "old");
    QTest::keyClicks(field, QStringLiteral(" name"));
    EXPECT_EQ(form.txtName.Text.Get(), "old name");
    form.txtName.Text = std::string();
    ServeEvents();
    EXPECT_TRUE(field->text().isEmpty());
    auto* const button = Find(view, "btnAdd").findChild<QPushButton*>();
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text().toStdString(), "Add");
    QTest::keyClick(button, Qt::Key_Space);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
}

TEST(FormView, TellsScreenReadersNameRoleTextAndValue)
{
    ShownForm shown;
    shown.form.imgKnob.Left = 150 + 1200;
    shown.form.lblTime.Caption = "01:02";
    ServeEvents();
    struct Case
    {
        const char* control;
        const char* name;
        QAccessible::Role role;
        const char* value;
    };
    const Case cases[] = {
        {"lblTime", "Curent position", QAccessible::StaticText, "01:02"},
        {"lblSong", "lblSong",         QAccessible::StaticText, "Song" },
        {"imgKnob", "imgKnob",         QAccessible::Slider,     "50%"  },
        {"imgBar",  "Position",        QAccessible::Slider,     "50%"  },
        {"imgArea", "imgArea",         QAccessible::NoRole,     ""     },
    };
    for (const Case& c : cases) {
        QAccessibleInterface* got =
            QAccessible::queryAccessibleInterface(&Find(shown.view, c.control));
        ASSERT_NE(got, nullptr);
        EXPECT_EQ(got->text(QAccessible::Name).toStdString(), c.name);
        EXPECT_EQ(got->role(), c.role) << c.control;
        EXPECT_EQ(got->text(QAccessible::Value).toStdString(), c.value) << c.control;
        EXPECT_EQ(got->valueInterface() != nullptr, c.role == QAccessible::Slider);
    }
    EXPECT_EQ(Find(shown.view, "lblTime").property("text").toString().toStdString(), "01:02");
}

TEST(FormView, RoundsEachEdgeOfAControlByItself)
{
    ShownForm shown;
    struct Case
    {
        double left = 0;
        double top = 0;
        double width = 0;
        double height = 0;
        QRect pixels;
    };
    const Case cases[] = {
        {15,     30,   45,   60,  QRect(1,   2,  3,   4)},
        {22.4,   22.6, 15,   15,  QRect(1,   2,  1,   1)},
        {3502.5, 100,  135,  135, QRect(234, 7,  9,   9)},
        {-300,   1080, 3495, 135, QRect(-20, 72, 233, 9)},
    };
    for (const Case& c : cases) {
        shown.form.imgArea.Left = c.left;
        shown.form.imgArea.Top = c.top;
        shown.form.imgArea.Width = c.width;
        shown.form.imgArea.Height = c.height;
        ServeEvents();
        EXPECT_EQ(Find(shown.view, "imgArea").geometry(), c.pixels) << c.left;
    }
}

TEST(FormView, MouseReachesTheSlotsInTwipsOfTheControl)
{
    ShownForm shown;
    std::vector<std::string> events;
    const auto record = [&](const char* what) {
        return [&events, what](const MouseEvent& e) {
            events.push_back(std::string(what) + " b" + std::to_string(static_cast<int>(e.button))
                             + " s" + std::to_string(e.shift) + " "
                             + std::to_string(std::lround(e.x)) + ","
                             + std::to_string(std::lround(e.y)));
        };
    };
    shown.form.imgBar.MouseDown = record("down");
    shown.form.imgBar.MouseMove = record("move");
    shown.form.imgBar.MouseUp = record("up");
    shown.form.imgBar.Click = [&] { events.emplace_back("click"); };
    QWidget& bar = Find(shown.view, "imgBar");
    QTest::mousePress(&bar, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, {100, 4});
    QTest::mouseMove(&bar, {120, 5});
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {120, 5});
    QTest::mousePress(&bar, Qt::RightButton, Qt::AltModifier, {1, 1});
    QTest::mouseRelease(&bar, Qt::RightButton, Qt::NoModifier, {1, 1});
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, {1, 1});
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {1, -3});
    EXPECT_THAT(events,
                testing::ElementsAre("down b1 s3 1500,60",
                                     "move b1 s0 1800,75",
                                     "up b1 s0 1800,75",
                                     "click",
                                     "down b2 s4 15,15",
                                     "up b2 s0 15,15",
                                     "down b1 s0 15,15",
                                     "up b1 s0 15,-45"));

    // A form that is not enabled takes nothing, until it is again.
    for (const bool enabled : {false, true}) {
        events.clear();
        shown.form.Enabled = enabled;
        ServeEvents();
        QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, {1, 1});
        EXPECT_EQ(events.empty(), !enabled);
    }
}

TEST(FormView, KeysReachTheFormAsCodePoints)
{
    ShownForm shown;
    std::u32string keys;
    shown.form.KeyPress = [&](char32_t key) { keys += key; };
    QTest::sendKeyEvent(
        QTest::Click, &shown.view, Qt::Key_X, QStringLiteral("X"), Qt::ShiftModifier);
    QTest::keyClick(&shown.view, Qt::Key_Return);
    QTest::keyClick(&shown.view, Qt::Key_Left);
    QTest::sendKeyEvent(
        QTest::Click, &shown.view, Qt::Key_unknown, QStringLiteral("\U0001F3B5"), {});
    EXPECT_EQ(keys, U"X\r\U0001F3B5");
}

TEST(FormView, ThrowingSlotEndsItselfAndNothingElse)
{
    ShownForm shown;
    shown.form.imgArea.MouseDown = [](const MouseEvent&) { throw std::runtime_error("slot"); };
    shown.form.KeyPress = [](char32_t) { throw 1; };
    shown.form.QueryClose = [] { throw std::runtime_error("close"); };
    testing::internal::CaptureStderr();
    QTest::mousePress(&Find(shown.view, "imgArea"), Qt::LeftButton, {}, {1, 1});
    QTest::keyClick(&shown.view, Qt::Key_A);
    shown.view.close();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "velmo: slot\nvelmo: a failure without a text\nvelmo: close\n");
    EXPECT_TRUE(shown.view.isVisible());
}

TEST(FormView, ClosingAsksTheFormAndHidesItIfNobodyAnswers)
{
    ShownForm shown;
    int asked = 0;
    shown.form.QueryClose = [&] { ++asked; };
    shown.view.close();
    ServeEvents();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(shown.view.isVisible());

    shown.form.QueryClose = nullptr;
    shown.view.close();
    EXPECT_FALSE(shown.form.Visible);
    EXPECT_TRUE(WaitUntil([&] { return !shown.view.isVisible(); }));
}

TEST(FormView, StateGoesBothWays)
{
    ShownForm shown;
    std::vector<controls::WindowState> told;
    shown.form.Resize = [&] { told.push_back(shown.form.State); };
    shown.form.State = controls::WindowState::Minimized;
    EXPECT_TRUE(WaitUntil([&] { return shown.view.isMinimized(); }));
    shown.view.showNormal();
    EXPECT_TRUE(WaitUntil([&] { return shown.form.State == controls::WindowState::Normal; }));
    shown.view.showMinimized();
    EXPECT_TRUE(WaitUntil([&] { return shown.form.State == controls::WindowState::Minimized; }));
    shown.form.Activate();
    EXPECT_TRUE(WaitUntil([&] { return !shown.view.isMinimized() && shown.view.isVisible(); }));
    EXPECT_EQ(shown.form.State, controls::WindowState::Normal);
    using enum controls::WindowState;
    EXPECT_EQ(told, (std::vector{Minimized, Normal, Minimized, Normal}));
}

TEST(FormView, AlwaysOnTopKeepsTheWindowThatIsThere)
{
    ShownForm shown;
    const WId before = shown.view.winId();
    for (const bool on : {true, false, true}) {
        shown.form.AlwaysOnTop = on;
        ServeEvents();
        EXPECT_EQ(shown.view.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), on);
        EXPECT_TRUE(shown.view.isVisible());
        EXPECT_EQ(shown.view.winId(), before);
    }
}

TEST(FormView, StandsWhereTheFormSaysAndFollowsIt)
{
    SmallForm form;
    form.Left = 1500;
    form.Top = 3000;
    form.AlwaysOnTop = true;
    const qt::FormView view(form);
    form.Show();
    ASSERT_TRUE(WaitUntil([&] { return view.isVisible(); }));
    EXPECT_EQ(view.pos(), QPoint(100, 200));
    EXPECT_EQ(view.size(), QSize(200, 100));
    EXPECT_TRUE(view.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    form.Left = 1650;
    EXPECT_TRUE(WaitUntil([&] { return view.pos() == QPoint(110, 200); }));
    EXPECT_EQ(form.Top, 3000);
}

TEST(FormView, LeftPressThatNoSlotTakesDragsTheWindow)
{
    struct Case
    {
        const char* grip = ""; ///< a control, or the form itself if empty
        bool hasSlot = false;
        bool beginsDrag = false;
        QPoint moved;
    };
    const Case cases[] = {
        {"",        false, false, QPoint(30, 20)},
        {"lblTime", false, false, QPoint(30, 20)},
        {"lblTime", true,  false, QPoint(0,  0) },
        {"lblTime", true,  true,  QPoint(30, 20)},
    };
    for (const Case& c : cases) {
        ShownForm shown;
        shown.form.Left = 1500;
        shown.form.Top = 1500;
        ServeEvents();
        if (c.hasSlot)
            shown.form.lblTime.MouseDown = [&](const MouseEvent&) {
                if (c.beginsDrag)
                    shown.form.BeginDrag();
            };
        QWidget& grip = *c.grip == '\0' ? shown.view : Find(shown.view, c.grip);
        QTest::mousePress(&grip, Qt::LeftButton, {}, {5, 3});
        QTest::mouseMove(&grip, {35, 23});
        QTest::mouseRelease(&grip, Qt::LeftButton, {}, {5, 3});
        QTest::mouseMove(&grip, {80, 80}); // the button is up: nothing moves any more
        EXPECT_EQ(QPointF(shown.form.Left / 15, shown.form.Top / 15),
                  QPointF(QPoint(100, 100) + c.moved))
            << c.grip << c.hasSlot << c.beginsDrag;
        EXPECT_EQ(shown.view.pos(), QPoint(100, 100) + c.moved);
    }
}

TEST(FormView, TypedTextReachesTheControlAndLockedTextStays)
{
    ShownForm shown;
    QWidget& edit = *Find(shown.view, "txtNote").findChild<QWidget*>();
    shown.form.txtNote.Text = "one\r\ntwo";
    ServeEvents();
    EXPECT_EQ(shown.form.txtNote.Text.Get(), "one\r\ntwo"); // showing it changes no line end
    QTest::keyClicks(&edit, QStringLiteral("no"));
    EXPECT_EQ(shown.form.txtNote.Text.Get(), "one\r\ntwo");
    shown.form.txtNote.Text = "";
    shown.form.txtNote.Locked = false;
    ServeEvents();
    QTest::keyClicks(&edit, QStringLiteral("ab"));
    ServeEvents();
    QTest::keyClicks(&edit, QStringLiteral("c"));
    EXPECT_EQ(shown.form.txtNote.Text.Get(), "abc");
}

/// The ticker of a bar that counts from 0 may stand above its track.
TEST(FormView, APieceIsSeenOnlyInsideItsContainer)
{
    forms::frmListMGR form;
    const qt::FormView view(form);
    form.Show();
    const struct
    {
        std::int32_t max, position;
        bool visible;
        QRect seen; ///< null: all of it
    } cases[] = {
        {3,      0,       true,    QRect(0,        5, 16, 11)},
        {2,    0,        false,               QRect()                            },
        {2, 1,true,QRect()},
    };
    const QWidget* ticker = nullptr;
    for (const auto& c : cases) {
        form.scBarMgr.Max = c.max;
        form.scBarMgr.SetPosition(c.position);
        ServeEvents();
        ticker = &Find(view, "imgResizeTicker");
        EXPECT_EQ(ticker->isVisible(), c.visible);
        EXPECT_TRUE(!c.visible || ticker->mask().boundingRect() == c.seen) << c.max << c.position;
    }
}

TEST(FormView, FormOutlivesItsView)
{
    SmallForm form;
    {
        const qt::FormView view(form);
        form.Show();
        ServeEvents();
        form.lblTime.Caption = "pending";
    }
    form.lblTime.Caption = "after";
    form.Hide();
    ServeEvents();
    EXPECT_FALSE(form.Changed || form.RepaintNow || form.Activate || form.BeginDrag);
}

} // namespace
} // namespace velmo::test
