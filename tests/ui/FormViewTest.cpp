#include "forms/frmAddLocation.h"
#include "forms/frmListMGR.h"
#include "ui/SmallForm.h"

#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <sstream>

namespace velmo::test {
namespace {

using controls::MouseEvent;

TEST(FormView, WhatIsTypedInAFieldReachesTheFormAndAButtonIsPressedByKey)
{
    ShownView<forms::frmAddLocation> shown;
    int clicks = 0;
    shown.form.btnAdd.Click = [&] { ++clicks; };
    auto& field = *Find(shown.view, "txtName").findChild<QLineEdit*>();
    shown.form.txtName.Text = "old";
    ServeEvents();
    QTest::keyClicks(&field, QStringLiteral(" name"));
    EXPECT_EQ(shown.form.txtName.Text.Get(), "old name");
    auto& button = *Find(shown.view, "btnAdd").findChild<QPushButton*>();
    EXPECT_EQ(button.text(), QStringLiteral("Add"));
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
}

TEST(FormView, TypedTextReachesTheControlAndLockedTextStays)
{
    ShownForm shown;
    QWidget& edit = *Find(shown.view, "txtNote").findChild<QWidget*>();
    shown.form.txtNote.Text = "one\r\ntwo";
    ServeEvents();
    QTest::keyClicks(&edit, QStringLiteral("no"));
    EXPECT_EQ(shown.form.txtNote.Text.Get(), "one\r\ntwo") << "showing it changes no line end";
    shown.form.txtNote.Text = "";
    shown.form.txtNote.Locked = false;
    for (const char* typed : {"ab", "c"}) {
        ServeEvents();
        QTest::keyClicks(&edit, QString::fromUtf8(typed));
    }
    EXPECT_EQ(shown.form.txtNote.Text.Get(), "abc");
}

TEST(FormView, RoundsEachEdgeOfAControlByItself)
{
    ShownForm shown;
    const auto expect = [&](controls::Bounds twips, QRect pixels) {
        shown.form.imgArea.Left = twips.left;
        shown.form.imgArea.Top = twips.top;
        shown.form.imgArea.Width = twips.width;
        shown.form.imgArea.Height = twips.height;
        ServeEvents();
        EXPECT_EQ(Find(shown.view, "imgArea").geometry(), pixels);
    };
    expect({22.4, 22.6, 15, 15}, {1, 2, 1, 1});
    expect({3502.5, 100, 135, 135}, {234, 7, 9, 9});
    expect({-300, 1080, 3495, 135}, {-20, 72, 233, 9});
}

TEST(FormView, MouseReachesTheSlotsInTwipsOfTheControl)
{
    ShownForm shown;
    std::ostringstream events;
    const auto record = [&](const char* what) {
        return [&events, what](const MouseEvent& e) {
            events << what << " b" << static_cast<int>(e.button) << " s" << e.shift << " "
                   << std::lround(e.x) << "," << std::lround(e.y) << "\n";
        };
    };
    shown.form.imgBar.MouseDown = record("down");
    shown.form.imgBar.MouseMove = record("move");
    shown.form.imgBar.MouseUp = record("up");
    shown.form.imgBar.Click = [&] { events << "click\n"; };
    QWidget& bar = Find(shown.view, "imgBar");
    QTest::mousePress(&bar, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, {100, 4});
    QTest::mouseMove(&bar, {120, 5});
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {120, 5});
    QTest::mouseClick(&bar, Qt::RightButton, Qt::AltModifier, {1, 1});
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, {1, 1});
    QTest::mouseRelease(&bar, Qt::LeftButton, Qt::NoModifier, {1, -3});
    shown.form.Enabled = false;
    ServeEvents();
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, {5, 5});
    shown.form.Enabled = true;
    ServeEvents();
    QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, {9, 9});
    EXPECT_EQ(events.str(),
              "down b1 s3 1500,60\nmove b1 s0 1800,75\nup b1 s0 1800,75\nclick\n"
              "down b2 s4 15,15\nup b2 s4 15,15\n"
              "down b1 s0 15,15\nup b1 s0 15,-45\n" // no click beside it
              "down b1 s0 135,135\n");              // nothing while the form was not enabled
}

TEST(FormView, ThrowingSlotEndsItselfAndNothingElse)
{
    ShownForm shown;
    shown.form.imgArea.MouseDown = [](const MouseEvent&) { throw std::runtime_error("no\nslot"); };
    shown.form.KeyPress = [](char32_t) { throw 1; };
    shown.form.QueryClose = [] { throw std::runtime_error("close"); };
    testing::internal::CaptureStderr();
    QTest::mousePress(&Find(shown.view, "imgArea"), Qt::LeftButton, {}, {1, 1});
    QTest::keyClick(&shown.view, Qt::Key_A);
    shown.view.close();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "velmo: no slot\nvelmo: a failure without a text\nvelmo: close\n");
    EXPECT_TRUE(shown.view.isVisible()) << "the form was asked";
    shown.form.QueryClose = nullptr;
    shown.view.close();
    EXPECT_TRUE(WaitUntil([&] { return !shown.view.isVisible(); })) << "nobody was there to ask";
}

TEST(FormView, StateThatTheWindowManagerGivesReachesTheForm)
{
    using enum controls::WindowState;
    ShownForm shown;
    shown.view.showMinimized();
    EXPECT_TRUE(WaitUntil([&] { return shown.form.State == Minimized; }));
    shown.view.showNormal();
    EXPECT_TRUE(WaitUntil([&] { return shown.form.State == Normal; }));
}

TEST(FormView, AlwaysOnTopKeepsTheWindowThatIsThere)
{
    ShownForm shown;
    const WId before = shown.view.winId();
    for (const bool on : {true, false}) {
        shown.form.AlwaysOnTop = on;
        ServeEvents();
        EXPECT_EQ(shown.view.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint), on);
        EXPECT_TRUE(shown.view.isVisible());
        EXPECT_EQ(shown.view.winId(), before);
    }
}

TEST(FormView, LeftPressThatNoSlotTakesDragsTheWindow)
{
    /// The grip is a control, or the form itself; "+" is a slot that drags, "-" one that doesn't.
    const auto expect = [](const char* grip, char slot, bool moves) {
        ShownForm shown;
        shown.form.Left = 1500;
        shown.form.Top = 1500;
        ServeEvents();
        if (slot == '+')
            shown.form.lblTime.MouseDown = [&](const auto&) { shown.form.BeginDrag(); };
        if (slot == '-')
            shown.form.lblTime.MouseDown = [](const auto&) {};
        QWidget& widget = grip == nullptr ? shown.view : Find(shown.view, grip);
        QTest::mousePress(&widget, Qt::LeftButton, {}, {5, 3});
        QTest::mouseMove(&widget, {35, 23});
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, {5, 3});
        QTest::mouseMove(&widget, {150, 55}); // the button is up: nothing moves any more
        ServeEvents();
        const QPoint place = QPoint(100, 100) + (moves ? QPoint(30, 20) : QPoint());
        EXPECT_EQ(QPointF(shown.form.Left / 15, shown.form.Top / 15), QPointF(place));
        EXPECT_EQ(shown.view.pos(), place);
    };
    expect(nullptr, ' ', true);
    expect("lblTime", ' ', true);
    expect("lblTime", '-', false);
    expect("lblTime", '+', true);
}

/// The ticker of a bar that counts from 0 may stand above its track.
TEST(FormView, APieceIsSeenOnlyInsideItsContainer)
{
    ShownView<forms::frmListMGR> shown;
    const auto seen = [&](std::int32_t max, std::int32_t position) {
        shown.form.scBarMgr.Max = max;
        shown.form.scBarMgr.SetPosition(position);
        ServeEvents();
        const QWidget& ticker = Find(shown.view, "imgResizeTicker");
        const QRect whole = ticker.mask().isEmpty() ? ticker.rect() : ticker.mask().boundingRect();
        return ticker.isVisible() ? whole : QRect();
    };
    EXPECT_EQ(seen(3, 0), QRect(0, 5, 16, 11));
    EXPECT_EQ(seen(2, 0), QRect());
    EXPECT_EQ(seen(2, 1), QRect(0, 0, 16, 16));
}

} // namespace
} // namespace velmo::test
