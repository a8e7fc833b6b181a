#include "Xcb.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <xcb/xcb.h>

namespace velmo::qt {

xcb_connection_t* XcbConnection()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

std::uint32_t XcbWindowOf(const QWidget& window)
{
    const QWindow* const handle = window.windowHandle();
    if (handle == nullptr || handle->handle() == nullptr)
        return 0;
    return static_cast<std::uint32_t>(handle->winId());
}

std::uint32_t XcbAtom(xcb_connection_t* connection, const std::string& name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : 0;
}

} // namespace velmo::qt
