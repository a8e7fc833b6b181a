#include "forms/Playlist.h"
#include "ui/ShownView.h"

#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>

#include <gmock/gmock.h>

#include <random>

namespace velmo::test {
namespace {

using testing::ElementsAre;

constexpr int RowHeight = 14;

/// Pixels in which there is writing.
int Ink(const QImage& picture, const QRect& place)
{
    return CountPixels(picture, place, [](QColor pixel) { return pixel.green() > 60; });
}

/// The playlist with rows "1" to "100".
struct ShownList : ShownView<forms::Playlist>
{
    ShownList()
    {
        for (int row = 1; row <= 100; ++row)
            rows.Add({.Text = std::to_string(row), .Length = "01:00", .Path = ""});
        ServeEvents();
    }

    /// The middle of the row at that place of the view, from 1.
    static QPoint At(int place) { return {100, (place - 1) * RowHeight + RowHeight / 2}; }
    void Click(int place, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(&list, button, keys, At(place));
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&list, static_cast<Qt::Key>(key), modifiers);
    }
    std::vector<std::size_t> Marked() const
    {
        std::vector<std::size_t> marked;
        for (std::size_t row = 1; row <= rows.Count(); ++row)
            if (rows.IsMarked(row))
                marked.push_back(row);
        return marked;
    }

    controls::ListRows& rows = form.pl;
    QWidget& list = Find(view, "pl");
};

TEST(ListRowsWidget, ShowsAsManyRowsAsItsControlSaysAndRepaintsThoseThatChange)
{
    ShownList shown;
    shown.rows.Choose(50, controls::Marking::Only); // row 19 is at the top
    ServeEvents();
    const QImage picture = shown.list.grab().toImage();
    const auto ground = [&](int place) { return picture.pixelColor(shown.At(place)); };
    EXPECT_EQ(ground(31), QColor(1, 1, 1));
    EXPECT_NE(ground(32), QColor(1, 1, 1)) << "row 50, at the foot of the view";
    EXPECT_GT(Ink(picture, QRect(4, 0, 20, RowHeight)), 5) << "the text";
    EXPECT_GT(Ink(picture, QRect(228, 0, 40, RowHeight)), 5) << "the length, at the right";
    EXPECT_EQ(Ink(picture, QRect(100, 0, 100, RowHeight)), 0);

    PaintCounter paints;
    const QRegion& painted = paints.areas["pl"];
    shown.rows.SetText(20, "new");
    shown.rows.SetText(1, "out of view");
    ServeEvents();
    EXPECT_EQ(painted.boundingRect(), QRect(0, RowHeight, 268, RowHeight));
    shown.rows.EnsureVisible(18);
    ServeEvents();
    EXPECT_EQ(painted.boundingRect(), QRect(0, 0, 268, 2 * RowHeight)) << "the others move";
}

TEST(ListRowsWidget, WhatIsMovedAndWhatIsPaintedMakeOnePicture)
{
    ShownList shown;
    shown.rows.HotTracking = true;
    std::mt19937 random(1); // every run tries the same
    for (int round = 0; round < 60; ++round) {
        const std::size_t row = 1 + random() % shown.rows.Count();
        const int place = static_cast<int>(random() % 32) + 1;
        switch (random() % 6) {
        case 0: shown.rows.SetText(row, "text " + std::to_string(round)); break;
        case 1: shown.rows.Remove(row); break;
        case 2: shown.rows.Choose(row, controls::Marking::Toggle); break;
        case 3: shown.form.frameOpen.Visible = !shown.form.frameOpen.Visible; break;
        case 4: QTest::mouseMove(&shown.list, shown.At(place)); break;
        default: shown.Press(place % 2 == 0 ? Qt::Key_PageUp : Qt::Key_Down); break;
        }
        shown.rows.EnsureVisible(
            std::min(shown.rows.FirstVisibleEntry() + 33 + random() % 3, shown.rows.Count()));
        if (round % 3 == 0)
            continue; // several changes at once
        ServeEvents();
        const QRect list = shown.list.geometry();
        const auto part = [&](const QPixmap& picture) {
            return picture.copy(list).toImage().convertToFormat(QImage::Format_RGB32);
        };
        const QPixmap seen = shown.view.screen()->grabWindow(shown.view.winId());
        ASSERT_EQ(part(seen), part(shown.view.grab())) << round;
    }
}

TEST(ListRowsWidget, ClicksMarkAndReachTheSlotsInTheirOrder)
{
    ShownList shown;
    shown.Click(3);
    shown.Click(5, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_THAT(shown.Marked(), ElementsAre(3, 4, 5));
    shown.Click(4, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_THAT(shown.Marked(), ElementsAre(3, 5));
    shown.Click(5, Qt::RightButton);
    EXPECT_THAT(shown.Marked(), ElementsAre(3, 5)) << "the menu is for all of them";
    EXPECT_EQ(shown.rows.SelectedEntry(), 5U);
    shown.Click(7, Qt::RightButton);
    EXPECT_THAT(shown.Marked(), ElementsAre(7));

    std::string events;
    shown.rows.MouseDown = [&](const auto&) { events += "down "; };
    shown.rows.MouseUp = [&](const auto&) {
        events += "up" + std::to_string(shown.rows.SelectedEntry()) + " ";
    };
    shown.rows.Click = [&] { events += "click "; };
    shown.rows.DblClick = [&] { events += "double "; };
    shown.Click(2);
    QTest::mouseDClick(&shown.list, Qt::LeftButton, {}, shown.At(2));
    QTest::mouseRelease(&shown.list, Qt::LeftButton, {}, shown.At(2));
    EXPECT_EQ(events, "down up2 click double up2 ");

    for (std::size_t row = 100; row > 2; --row)
        shown.rows.Remove(row);
    shown.Click(20); // below the last row
    EXPECT_THAT(shown.Marked(), ElementsAre());
    EXPECT_EQ(shown.rows.SelectedEntry(), 2U);
}

TEST(ListRowsWidget, KeysAreToldBeforeTheirEffectAndLettersGoOnToTheForm)
{
    ShownList shown;
    std::string events;
    shown.rows.KeyDown = [&](int code) {
        events += std::to_string(code) + "@" + std::to_string(shown.rows.SelectedEntry()) + " ";
    };
    shown.rows.KeyPress = [&](char32_t key) { events += "list" + std::to_string(key) + " "; };
    shown.form.KeyPress = [&](char32_t key) { events += "form" + std::to_string(key) + " "; };
    shown.Press(Qt::Key_Down);
    shown.Press(Qt::Key_PageDown, Qt::ShiftModifier);
    shown.Press(Qt::Key_End);
    EXPECT_EQ(events, "40@1 16@2 34@2 35@32 ");
    EXPECT_THAT(shown.Marked(), ElementsAre(100));
    EXPECT_EQ(shown.rows.FirstVisibleEntry(), 69U);
    events.clear();
    shown.Press(Qt::Key_B);
    shown.Press(Qt::Key_Return);
    shown.Press(Qt::Key_Delete);
    shown.Press(Qt::Key_Period); // whose own code would be that of Delete
    EXPECT_EQ(events, "66@100 list98 form98 13@100 list13 form13 46@100 0@100 list46 form46 ");
    shown.Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(shown.rows.MarkedCount(), 100U);
}

TEST(ListRowsWidget, WheelAddsUpToStepsAndScrollsNothingItself)
{
    ShownList shown;
    std::vector<int> steps;
    shown.rows.MouseWheel = [&](int delta) { steps.push_back(delta); };
    for (const int delta : {-40, -40, -40, -300, 119, 1, 0, -60, 120}) {
        QWheelEvent event(
            {50, 50}, {50, 50}, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, {}, false);
        QApplication::sendEvent(&shown.list, &event);
        EXPECT_FALSE(event.isAccepted());
    }
    EXPECT_THAT(steps, ElementsAre(-120, -120, -120, 120, 120));
    EXPECT_EQ(shown.rows.FirstVisibleEntry(), 1U);
}

TEST(ListRowsWidget, LabelEditIsKeptOrCalledOffAsItEnds)
{
    ShownList shown;
    const std::string hours = "01:29:00";                                  // wider than its column
    shown.rows.SetRow(2, {.Text = "a\xFFz", .Length = hours, .Path = ""}); // no UTF-8
    shown.rows.Choose(2, controls::Marking::Only);
    std::string events;
    shown.rows.AfterLabelEdit = [&](std::size_t row, const std::string& text) {
        events += std::to_string(row) + ":" + text + " ";
    };
    shown.rows.KeyDown = [&](int code) { events += "key" + std::to_string(code) + " "; };
    /// Adds a "!" to the text and ends the edit so.
    const auto expect = [&](const std::function<void(QLineEdit&)>& end, const char* what) {
        events.clear();
        shown.rows.StartLabelEdit();
        auto* const edit = shown.list.findChild<QLineEdit*>();
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(QApplication::focusWidget(), edit);
        const int length = edit->fontMetrics().horizontalAdvance(QString::fromStdString(hours));
        EXPECT_LT(edit->geometry().right(), shown.list.width() - 5 - length);
        QTest::keyClick(edit, Qt::Key_End);
        QTest::keyClicks(edit, QStringLiteral("!"));
        QTest::keyClick(edit, Qt::Key_Up);
        end(*edit);
        ServeEvents();
        EXPECT_EQ(events, what);
        EXPECT_TRUE(WaitUntil([&] { return shown.list.findChild<QLineEdit*>() == nullptr; }));
        EXPECT_EQ(shown.rows.SelectedEntry(), 2U) << "no key went past the field";
    };
    expect([](QLineEdit& edit) { QTest::keyClick(&edit, Qt::Key_Return); }, "2:a\xFFz! key13 ");
    expect([](QLineEdit& edit) { QTest::keyClick(&edit, Qt::Key_Escape); }, "");
    expect([&](QLineEdit&) { shown.list.setFocus(); }, "2:a\xFFz! ");
    expect([&](QLineEdit&) { shown.rows.EnsureVisible(90); }, "");
}

TEST(ListRowsWidget, LocalFilesAreDroppedInTheirOrderAsBytes)
{
    ShownList shown;
    std::vector<std::string> dropped;
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"),
                 "# comment\r\nfile:///m/b%20b.mp3\r\nhttp://host/c.mp3\r\nfile://other.host/d\r\n"
                 "file:/m/%FF%25.mp3\r\nFILE://localhost/m/a\r\nfile://\r\n/m/bare\r\n");
    const auto send = [&](bool isTaken) {
        QDragEnterEvent enter(
            {5, 5}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&shown.list, &enter);
        EXPECT_EQ(enter.isAccepted(), isTaken);
    };
    send(false); // nobody wants them
    shown.rows.OLEDragDrop = [&](const std::vector<std::string>& paths) { dropped = paths; };
    send(true);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&shown.list, &drop);
    EXPECT_THAT(dropped, ElementsAre()) << "the other program is let go first";
    ServeEvents();
    EXPECT_THAT(dropped, ElementsAre("/m/b b.mp3", "/m/\xFF%.mp3", "/m/a"));
}

TEST(ListRowsWidget, RowUnderThePointerIsUnderlinedAndSelectedAfterARest)
{
    ShownList shown;
    const auto inkOf = [&](int place) { // below the baseline of digits stands nothing else
        ServeEvents();
        return Ink(shown.list.grab().toImage(), QRect(4, place * RowHeight - 3, 6, 3));
    };
    shown.rows.HotTracking = true;
    QTest::mouseMove(&shown.list, shown.At(4));
    EXPECT_GT(inkOf(4), 3);
    EXPECT_EQ(inkOf(5), 0);
    shown.rows.HoverSelection = true;
    QElapsedTimer rest;
    rest.start();
    QTest::mouseMove(&shown.list, shown.At(5));
    EXPECT_EQ(inkOf(4), 0);
    ASSERT_TRUE(WaitUntil([&] { return shown.rows.MarkedCount() > 0; }));
    EXPECT_GE(rest.elapsed(), 350) << "a coarse timer may be early by a twentieth";
    EXPECT_THAT(shown.Marked(), ElementsAre(5));
}

} // namespace
} // namespace velmo::test
