#include "skin/Skin.h"
#include "ui/SmallForm.h"

#include <QBackingStore>
#include <QImage>

#include <gmock/gmock.h>

namespace velmo::test {
namespace {

int PixelsOf(const QImage& picture, const QRect& place, QColor colour)
{
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            count += picture.pixelColor(x, y) == colour ? 1 : 0;
    return count;
}

TEST(Painting, NewTextRepaintsItsLabelAlone)
{
    ShownForm shown;
    PaintCounter paints;
    shown.form.lblSong.Caption = "Another";
    ASSERT_TRUE(WaitUntil([&] { return paints.Count("lblSong") > 0; }));
    ServeEvents();
    EXPECT_THAT(paints.Painted(), testing::ElementsAre("lblSong"));
    EXPECT_EQ(paints.Count("lblSong"), 1);
}

TEST(Painting, TenThousandChangesOfOneTurnAreOnePaint)
{
    ShownForm shown;
    PaintCounter paints;
    for (int i = 0; i < 10'000; ++i)
        shown.form.lblTime.Caption = std::to_string(i);
    EXPECT_EQ(paints.Count("lblTime"), 0);
    ASSERT_TRUE(WaitUntil([&] { return paints.Count("lblTime") > 0; }));
    ServeEvents();
    EXPECT_EQ(paints.Count("lblTime"), 1);
}

TEST(Painting, WhatCannotBeSeenPaintsNothing)
{
    ShownForm shown;
    PaintCounter paints;
    shown.form.lblSong.Caption = "Another";
    shown.form.lblSong.Caption = "Song"; // back before anyone could see it
    shown.form.lblTime.ToolTipText = "tip";
    shown.form.imgBar.AccessibleName = "bar";
    shown.form.tmrTick.Enabled = true;
    shown.form.Caption = "Title";
    ASSERT_TRUE(WaitUntil([&] { return shown.view.windowTitle() == QStringLiteral("Title"); }));
    ServeEvents();
    EXPECT_THAT(paints.Painted(), testing::IsEmpty());
}

TEST(Painting, MovingTheKnobLeavesTheLabelsAlone)
{
    ShownForm shown;
    PaintCounter paints;
    shown.form.imgKnob.Left = 900;
    ASSERT_TRUE(WaitUntil([&] { return paints.Count("imgKnob") > 0; }));
    ServeEvents();
    EXPECT_EQ(paints.Count("lblTime") + paints.Count("lblSong") + paints.Count("imgArea"), 0);
}

TEST(Painting, RepaintNowDoesNotWaitForTheEventLoop)
{
    ShownForm shown;
    PaintCounter paints;
    shown.form.lblSong.Caption = "Now";
    shown.form.RepaintNow();
    EXPECT_GE(paints.Count("lblSong"), 1);
}

TEST(Painting, LabelShowsItsTextInItsColours)
{
    ShownForm shown;
    shown.form.lblSong.Font = controls::Font{.sizePoints = 14, .weight = 700};
    shown.form.lblSong.ForeColor = 0x0000FF; // red
    shown.form.lblSong.BackColor = 0x400000; // dark blue
    shown.form.lblSong.Caption = "MMMM";
    shown.form.imgArea.FillColor = 0x00FF00;
    ServeEvents();
    const QImage picture = shown.view.grab().toImage();
    const QRect label = Find(shown.view, "lblSong").geometry();
    EXPECT_GT(PixelsOf(picture, label, QColor(255, 0, 0)), 20);
    EXPECT_GT(PixelsOf(picture, label, QColor(0, 0, 64)), 200);
    EXPECT_EQ(PixelsOf(picture, Find(shown.view, "imgArea").geometry(), QColor(0, 255, 0)), 100);
}

TEST(Painting, TextThatIsToShrinkFitsIntoItsLabel)
{
    ShownForm shown;
    const QRect label = Find(shown.view, "lblTime").geometry();
    const QRect lastColumns(label.right() - 2, label.top(), 3, label.height());
    const auto lit = [&] {
        ServeEvents();
        return lastColumns.width() * lastColumns.height()
               - PixelsOf(shown.view.grab().toImage(), lastColumns, QColor(1, 1, 1));
    };
    shown.form.lblTime.Caption = "MMMMMMMMMMMMMMMM ";
    EXPECT_GT(lit(), 0);
    shown.form.lblTime.Overflow = controls::TextOverflow::Shrink;
    EXPECT_EQ(lit(), 0);
}

TEST(Painting, PictureShowsItsPixelsFromTheBottomUpAndItsGroundAround)
{
    ShownForm shown;
    const QRect box = Find(shown.view, "picSound").geometry();
    const auto pixel = [&](int x, int y) {
        ServeEvents();
        return shown.view.grab().toImage().pixelColor(box.topLeft() + QPoint(x, y));
    };
    controls::Palette palette{};
    palette[1] = 0xFF8000;
    palette[2] = 0x0080FF;
    const std::vector<std::uint8_t> indexes = {1, 1, 1, 0, 0, 2}; // two rows of three
    shown.form.picSound.BackColor = 0x000040;
    EXPECT_EQ(pixel(0, 0), QColor(64, 0, 0));
    shown.form.picSound.SetDIBits(3, 2, indexes, palette);
    EXPECT_EQ(pixel(0, 1), QColor(255, 128, 0));
    EXPECT_EQ(pixel(2, 0), QColor(0, 128, 255));
    EXPECT_EQ(pixel(0, 0), QColor(0, 0, 0));
    EXPECT_EQ(pixel(3, 0), QColor(64, 0, 0));

    // A new frame stands in the window's store at once, without a paint event.
    PaintCounter paints;
    palette[2] = 0x00FF00;
    shown.form.picSound.SetDIBits(3, 2, indexes, palette);
    const auto* store = dynamic_cast<QImage*>(shown.view.backingStore()->paintDevice());
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->pixelColor(box.topLeft() + QPoint(2, 0)), QColor(0, 255, 0));
    EXPECT_EQ(store->pixelColor(box.topLeft() + QPoint(0, 1)), QColor(255, 128, 0));
    ServeEvents();
    EXPECT_THAT(paints.Painted(), testing::IsEmpty());
    shown.form.picSound.Cls();
    EXPECT_EQ(pixel(0, 1), QColor(64, 0, 0));
}

TEST(Painting, HiddenControlIsNotPaintedAndComesBack)
{
    ShownForm shown;
    const QRect area = Find(shown.view, "imgArea").geometry();
    shown.form.imgArea.FillColor = 0x00FF00;
    for (const bool visible : {true, false, true}) {
        shown.form.imgArea.Visible = visible;
        ServeEvents();
        EXPECT_EQ(PixelsOf(shown.view.grab().toImage(), area, QColor(0, 255, 0)),
                  visible ? 100 : 0);
    }
}

TEST(Painting, WindowHasTheOutlineOfItsFormFromItsFirstShowOn)
{
    SmallForm form;
    form.Outline = std::vector<controls::PixelArea>{
        {8, 0, 184, 2 },
        {0, 2, 200, 98}
    };
    const qt::FormView view(form);
    form.Show();
    ASSERT_TRUE(WaitUntil([&] { return view.isVisible(); }));
    EXPECT_EQ(view.mask(), QRegion(8, 0, 184, 2) + QRegion(0, 2, 200, 98));
    form.Outline = std::vector<controls::PixelArea>();
    ServeEvents();
    EXPECT_TRUE(view.mask().isEmpty());
}

QImage Decoded(controls::PictureRef picture)
{
    const skin::Bitmap bitmap = skin::Decode(picture, 1);
    QImage image(bitmap.width, bitmap.height, QImage::Format_RGB32);
    for (int y = 0; y < bitmap.height; ++y)
        for (int x = 0; x < bitmap.width; ++x)
            image.setPixel(x, y, bitmap.Pixels()[static_cast<std::size_t>(y * bitmap.width + x)]);
    return image;
}

TEST(Painting, GroundAndImagesShowTheSkinAsItIsDrawn)
{
    using controls::PictureList;
    ShownForm shown;
    const controls::PictureRef ground{PictureList::pl, 1};
    const controls::PictureRef close{PictureList::wnd, 1};
    const QRect area = Find(shown.view, "imgArea").geometry(); // 10 by 10
    shown.form.Picture = ground;
    ServeEvents();
    const auto grabbed = [&] {
        ServeEvents();
        return shown.view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage drawnGround = Decoded(ground).copy(area);
    EXPECT_EQ(grabbed().copy(area), drawnGround); // an image without a picture is clear
    shown.form.imgArea.Picture = close;
    EXPECT_EQ(grabbed().copy(area), Decoded(close).copy(0, 0, 10, 10)); // cut off
    shown.form.imgArea.Stretch = true;
    EXPECT_EQ(grabbed().copy(area),
              Decoded(close)
                  .scaled(10, 10, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                  .convertToFormat(QImage::Format_RGB32));
    shown.form.imgArea.Stretch = false;
    shown.form.imgArea.Picture = controls::PictureRef{PictureList::wmain, 200}; // none such
    EXPECT_EQ(grabbed().copy(area), drawnGround);
}

TEST(Painting, AnotherPictureUnderTheMouseRepaintsItsImageAlone)
{
    ShownForm shown;
    shown.form.Picture = controls::PictureRef{controls::PictureList::pl, 1};
    shown.form.imgArea.TakeStates(controls::PictureList::wnd, 1);
    ServeEvents();
    PaintCounter paints;
    shown.form.imgArea.ShowHover();
    ASSERT_TRUE(WaitUntil([&] { return paints.Count("imgArea") > 0; }));
    shown.form.imgArea.ShowHover();
    ServeEvents();
    EXPECT_THAT(paints.Painted(), testing::ElementsAre("imgArea"));
    EXPECT_EQ(paints.Count("imgArea"), 1);
}

} // namespace
} // namespace velmo::test
