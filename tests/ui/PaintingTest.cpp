#include "skin/Skin.h"
#include "ui/SmallForm.h"

#include <QBackingStore>
#include <QImage>
#include <QScreen>

#include <gmock/gmock.h>

namespace velmo::test {
namespace {

int PixelsOf(const QImage& picture, const QRect& place, QColor colour)
{
    return CountPixels(picture, place, [&](QColor pixel) { return pixel == colour; });
}

TEST(Painting, WhatChangesIsPaintedAloneAndOnce)
{
    using controls::PictureList;
    ShownForm shown;
    SmallForm& form = shown.form;
    form.Picture = controls::PictureRef{PictureList::pl, 1};
    form.imgArea.TakeStates(PictureList::wnd, 1);
    ServeEvents();
    const auto painted = [&](const std::function<void()>& change) {
        PaintCounter paints;
        change();
        // Painted together with what else is to paint.
        form.picSound.BackColor = form.picSound.BackColor + 1;
        EXPECT_TRUE(WaitUntil([&] { return paints.counts.erase("picSound") == 1; }));
        ServeEvents();
        std::string all;
        for (const auto& [name, count] : paints.counts)
            all += name + std::to_string(count);
        return all;
    };
    EXPECT_EQ(painted([&] {
                  for (int i = 0; i < 10'000; ++i)
                      form.lblTime.Caption = std::to_string(i);
              }),
              "lblTime1");
    EXPECT_EQ(painted([&] { form.imgArea.ShowHover(); }), "imgArea1");
    EXPECT_EQ(painted([&] {
                  form.imgArea.ShowHover();
                  form.lblSong.Caption = "Another";
                  form.lblSong.Caption = "Song"; // back before anyone could see it
                  form.lblTime.ToolTipText = "tip";
                  form.imgBar.AccessibleName = "bar";
                  form.tmrTick.Enabled = true;
                  form.Caption = "Title";
              }),
              "");
    EXPECT_EQ(painted([&] { form.imgKnob.Left = 900; }), "SmallForm1imgBar1imgKnob1");

    const PaintCounter paints;
    form.lblSong.Caption = "Now";
    form.RepaintNow();
    EXPECT_TRUE(paints.counts.contains("lblSong")) << "without waiting for the event loop";
}

TEST(Painting, TextThatGlowsLightsUpItsGround)
{
    ShownForm shown;
    shown.form.lblSong.BackColor = 0x400000; // dark blue
    shown.form.lblSong.Caption = "MMMM";
    const auto ground = [&] {
        const QImage picture = shown.view.screen()->grabWindow(shown.view.winId()).toImage();
        return PixelsOf(picture, Find(shown.view, "lblSong").geometry(), QColor(0, 0, 64));
    };
    ASSERT_TRUE(WaitUntil([&] { return ground() > 200; }));
    const int before = ground();
    shown.form.lblSong.Glow = 1;
    shown.form.lblSong.Caption = "MMMM ";
    EXPECT_TRUE(WaitUntil([&] { return ground() < before - 100; }));
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
    EXPECT_THAT(paints.counts, testing::IsEmpty());
    shown.form.picSound.Cls();
    EXPECT_EQ(pixel(0, 1), QColor(64, 0, 0));
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
    const auto bytes = std::as_bytes(bitmap.Pixels());
    return QImage(reinterpret_cast<const uchar*>(bytes.data()),
                  bitmap.width,
                  bitmap.height,
                  QImage::Format_RGB32)
        .copy();
}

TEST(Painting, ImagesAreCutOffOrStretched)
{
    using controls::PictureList;
    ShownForm shown;
    const controls::PictureRef close{PictureList::wnd, 1};
    const QRect area = Find(shown.view, "imgArea").geometry(); // 10 by 10
    const auto grabbed = [&] {
        ServeEvents();
        return shown.view.grab().copy(area).toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage ground = grabbed();
    shown.form.imgArea.Picture = close;
    EXPECT_EQ(grabbed(), Decoded(close).copy(0, 0, 10, 10));
    shown.form.imgArea.Stretch = true;
    EXPECT_EQ(grabbed(),
              Decoded(close)
                  .scaled(10, 10, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                  .convertToFormat(QImage::Format_RGB32));
    shown.form.imgArea.Picture = controls::PictureRef{PictureList::wmain, 200};
    EXPECT_EQ(grabbed(), ground) << "there is no such picture";
}

} // namespace
} // namespace velmo::test
