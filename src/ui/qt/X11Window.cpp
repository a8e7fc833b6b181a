// Windows of a block are moved under a grab of the server, which nobody can look into. A window
// manager that holds each window in a frame of its own takes our requests for itself and carries
// them out one by one, which can be seen. So while a block is dragged, the frames themselves are
// moved, and the manager is told once, at the end.

#include "X11Window.h"

#include "Xcb.h"

#include <QWidget>

#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace velmo::qt {

namespace {

xcb_window_t RootWindow(xcb_connection_t& connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(&connection)).data->root;
}

xcb_rectangle_t ToXcb(const ports::ScreenRect& part)
{
    return {.x = static_cast<std::int16_t>(part.left),
            .y = static_cast<std::int16_t>(part.top),
            .width = static_cast<std::uint16_t>(part.Width()),
            .height = static_cast<std::uint16_t>(part.Height())};
}

bool IsComposited(xcb_connection_t* connection)
{
    const auto asked = xcb_get_selection_owner(connection, XcbAtom(connection, "_NET_WM_CM_S0"));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, asked, nullptr));
    return reply && reply->owner != XCB_NONE;
}

bool Overlap(const ports::ScreenRect& a, const ports::ScreenRect& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// Those in front go first.
std::vector<X11Move> InOrder(std::vector<X11Move> moves)
{
    for (auto next = moves.begin(); next != moves.end(); ++next) {
        const auto isFree = [&](const X11Move& move) {
            const ports::ScreenRect there =
                move.from.MovedBy(move.to.x - move.from.left, move.to.y - move.from.top);
            return std::none_of(next, moves.end(), [&](const X11Move& other) {
                return other.target.id != move.target.id && Overlap(there, other.from);
            });
        };
        const auto free = std::find_if(next, moves.end(), isFree);
        if (free != moves.end())
            std::iter_swap(next, free);
    }
    return moves;
}

/// A frame's requests are let past the window manager for this one.
void Send(xcb_connection_t& connection, const X11Move& move)
{
    const std::uint32_t id = move.target.id;
    const std::array<std::uint32_t, 2> values = {static_cast<std::uint32_t>(move.to.x),
                                                 static_cast<std::uint32_t>(move.to.y)};
    const auto redirect = [&](std::uint32_t isPassedBy) {
        if (move.target.isRedirectedFrame)
            xcb_change_window_attributes(&connection, id, XCB_CW_OVERRIDE_REDIRECT, &isPassedBy);
    };
    redirect(1);
    xcb_configure_window(&connection, id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
    redirect(0);
}

} // namespace

bool IsX11()
{
    return XcbConnection() != nullptr;
}

void MoveX11(std::vector<X11Move> moves)
{
    if (moves.empty())
        return;
    xcb_connection_t* const connection = XcbConnection();
    xcb_grab_server(connection);
    for (const X11Move& move : InOrder(std::move(moves)))
        Send(*connection, move);
    xcb_ungrab_server(connection);
    xcb_flush(connection);
}

X11Target FrameOnX11(const QWidget& window)
{
    xcb_connection_t* const connection = XcbConnection();
    if (IsComposited(connection))
        return {};
    xcb_window_t frame = XcbWindowOf(window);
    for (;;) {
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, frame), nullptr));
        if (!tree || tree->parent == XCB_NONE)
            return {};
        if (tree->parent == tree->root)
            break;
        frame = tree->parent;
    }
    const auto askedAttributes = xcb_get_window_attributes(connection, frame);
    const auto askedFrame = xcb_get_geometry(connection, frame);
    const auto askedOwn = xcb_get_geometry(connection, XcbWindowOf(window));
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, askedAttributes, nullptr));
    const XcbReply<xcb_get_geometry_reply_t> outer(
        xcb_get_geometry_reply(connection, askedFrame, nullptr));
    const XcbReply<xcb_get_geometry_reply_t> own(
        xcb_get_geometry_reply(connection, askedOwn, nullptr));
    const bool isTight = outer && own && outer->width == own->width && outer->height == own->height
                         && outer->border_width == 0;
    if (frame == XcbWindowOf(window) || !isTight || !attributes)
        return {};
    return {.id = frame, .isRedirectedFrame = attributes->override_redirect == 0};
}

std::optional<ports::ScreenPoint> PlaceOnX11(const QWidget& window)
{
    xcb_connection_t* const connection = XcbConnection();
    const auto asked =
        xcb_translate_coordinates(connection, XcbWindowOf(window), RootWindow(*connection), 0, 0);
    const XcbReply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(connection, asked, nullptr));
    if (!reply)
        return std::nullopt;
    return ports::ScreenPoint{.x = reply->dst_x, .y = reply->dst_y};
}

std::optional<ports::ScreenPoint> PointerOnX11()
{
    xcb_connection_t* const connection = XcbConnection();
    const auto asked = xcb_query_pointer(connection, RootWindow(*connection));
    const XcbReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection, asked, nullptr));
    if (!reply)
        return std::nullopt;
    return ports::ScreenPoint{.x = reply->root_x, .y = reply->root_y};
}

void UnmapUnmanagedX11(const QWidget& window)
{
    xcb_connection_t* const connection = XcbConnection();
    const auto asked = xcb_get_property(connection,
                                        0,
                                        RootWindow(*connection),
                                        XcbAtom(connection, "_NET_SUPPORTING_WM_CHECK"),
                                        XCB_ATOM_WINDOW,
                                        0,
                                        1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, asked, nullptr));
    if (reply && reply->type == XCB_ATOM_WINDOW)
        return;
    xcb_unmap_window(connection, XcbWindowOf(window));
    xcb_flush(connection);
}

void ShapeX11(const QWidget& window, std::span<const ports::ScreenRect> parts)
{
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(parts.size());
    for (const ports::ScreenRect& part : parts)
        rectangles.push_back(ToXcb(part));
    for (const xcb_shape_sk_t kind : {XCB_SHAPE_SK_BOUNDING, XCB_SHAPE_SK_INPUT}) {
        if (parts.empty())
            xcb_shape_mask(XcbConnection(),
                           XCB_SHAPE_SO_SET,
                           kind,
                           XcbWindowOf(window),
                           0,
                           0,
                           XCB_PIXMAP_NONE);
        else
            xcb_shape_rectangles(XcbConnection(),
                                 XCB_SHAPE_SO_SET,
                                 kind,
                                 XCB_CLIP_ORDERING_YX_BANDED,
                                 XcbWindowOf(window),
                                 0,
                                 0,
                                 static_cast<std::uint32_t>(rectangles.size()),
                                 rectangles.data());
    }
    xcb_flush(XcbConnection());
}

} // namespace velmo::qt
