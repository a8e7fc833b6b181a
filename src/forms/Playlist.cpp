#include "Playlist.h"

namespace velmo::forms {

namespace {

using controls::PictureList;

/// The keys at the lower edge.
constexpr controls::Bounds EdgeKey(double left)
{
    return {.left = left, .top = 7065, .width = 480, .height = 240};
}

constexpr double FrameFoot = 7050;
constexpr double FrameKeyWidth = 810;
constexpr double FrameKeyHeight = 240;

/// A frame of `keys` keys, which stands above the key that lets it out. It touches that key: what
/// lies between them would make the pointer lose the frame on its way.
constexpr controls::Bounds Frame(double left, int keys)
{
    constexpr double Rim = 15;
    const double height = FrameKeyHeight * keys;
    return {.left = left - Rim,
            .top = FrameFoot - height - Rim,
            .width = FrameKeyWidth + 2 * Rim,
            .height = height + 2 * Rim};
}

/// The key at `place` of a frame of `keys` keys, counted from its top.
constexpr controls::Bounds FrameKey(double left, int place, int keys)
{
    return {.left = left,
            .top = FrameFoot - FrameKeyHeight * (keys - place),
            .width = FrameKeyWidth,
            .height = FrameKeyHeight};
}

constexpr double OpenLeft = 210;
constexpr double OrderLeft = 720;

} // namespace

Playlist::Playlist()
    : Form("Playlist", "Playlist", 4710, 7350, controls::BorderStyle::None)
    , pl(*this, "pl", {210, 285, 4020, 6720})
    , scBar(*this, "scBar", {4260, 285, 240, 6720})
    , imgOpen(*this, "imgOpen", EdgeKey(OpenLeft))
    , imgOrder(*this, "imgOrder", EdgeKey(OrderLeft))
    , imgSave(*this, "imgSave", EdgeKey(1230))
    , imgClear(*this, "imgClear", EdgeKey(4020))
    , maincapclose(*this, "maincapclose", {4470, 30, 195, 180})
    , frameOpen(*this, "frameOpen", Frame(OpenLeft, 4))
    , imgOpenMedia(*this, "imgOpenMedia", FrameKey(OpenLeft, 3, 4))
    , imgOpenDirectory(*this, "imgOpenDirectory", FrameKey(OpenLeft, 1, 4))
    , imgOpenList(*this, "imgOpenList", FrameKey(OpenLeft, 0, 4))
    , imgOpenLocation(*this, "imgOpenLocation", FrameKey(OpenLeft, 2, 4))
    , frameOrder(*this, "frameOrder", Frame(OrderLeft, 3))
    , imgOrderAZ(*this, "imgOrderAZ", FrameKey(OrderLeft, 0, 3))
    , imgOrderZA(*this, "imgOrderZA", FrameKey(OrderLeft, 1, 3))
    , imgOrderRandom(*this, "imgOrderRandom", FrameKey(OrderLeft, 2, 3))
    , tmrInfo(*this, "tmrInfo", 1, false, controls::TimerAccuracy::Coarse)
{
    Picture = controls::PictureRef{PictureList::pl, 1};
    pl.LengthColumnWidth = 600;
    pl.AccessibleName = "Playlist";
    scBar.AccessibleName = "Scroll bar";

    const auto at = [](std::uint8_t index) { return controls::PictureRef{PictureList::pl, index}; };
    imgClear.TakeStates(PictureList::pl, 2);
    imgOpen.TakeStates({.normal = at(5), .pressed = at(6), .hover = at(19)});
    imgOrder.TakeStates({.normal = at(20), .pressed = at(24), .hover = at(25)});
    imgSave.TakeStates(PictureList::pl, 32);
    imgOpenDirectory.TakeStates(PictureList::pl, 7);
    imgOpenList.TakeStates(PictureList::pl, 10);
    imgOpenLocation.TakeStates(PictureList::pl, 13);
    imgOpenMedia.TakeStates(PictureList::pl, 16);
    imgOrderAZ.TakeStates(PictureList::pl, 21);
    imgOrderRandom.TakeStates(PictureList::pl, 26);
    imgOrderZA.TakeStates(PictureList::pl, 29);
    maincapclose.TakeStates(PictureList::wnd, 1);

    imgClear.ToolTipText = "Clear list";
    imgOpen.ToolTipText = "Open/Add to list";
    imgOrder.ToolTipText = "Order list";
    imgSave.ToolTipText = "Save to list";
    imgOpenDirectory.ToolTipText = "Add a folder";
    imgOpenList.ToolTipText = "Open a list";
    imgOpenLocation.ToolTipText = "Add a location";
    imgOpenMedia.ToolTipText = "Add files";
    imgOrderAZ.ToolTipText = "Sort from A to Z";
    imgOrderZA.ToolTipText = "Sort from Z to A";
    imgOrderRandom.ToolTipText = "Shuffle";
    maincapclose.ToolTipText = "Terminate";

    for (controls::Image* frame : {&frameOpen, &frameOrder})
        frame->FillColor = controls::GlassBlack;
    frameOpen.AccessibleName = "Open/Add to list";
    frameOrder.AccessibleName = "Order list";
    for (controls::Image* framed : {&frameOpen,
                                    &imgOpenMedia,
                                    &imgOpenDirectory,
                                    &imgOpenList,
                                    &imgOpenLocation,
                                    &frameOrder,
                                    &imgOrderAZ,
                                    &imgOrderZA,
                                    &imgOrderRandom})
        framed->Visible = false;
}

} // namespace velmo::forms
