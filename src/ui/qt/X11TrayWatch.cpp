// https://specifications.freedesktop.org/systemtray-spec: the host owns a selection named after the
// screen, and sends a MANAGER message to the root window when it has taken it. The toolkit listens
// to the root window already.

#include "X11TrayWatch.h"

#include "Xcb.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace velmo::qt {

namespace {

std::string ScreenNumber()
{
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) != 0)
        std::free(host); // NOLINT(*-no-malloc): C's
    return std::to_string(screen);
}

} // namespace

X11TrayWatch::X11TrayWatch(std::function<void()> onHost)
    : m_onHost(std::move(onHost))
    , m_connection(XcbConnection())
{
    if (m_connection == nullptr)
        return;
    m_selection = XcbAtom(m_connection, "_NET_SYSTEM_TRAY_S" + ScreenNumber());
    m_manager = XcbAtom(m_connection, "MANAGER");
    qGuiApp->installNativeEventFilter(this);
    if (HasHost())
        m_onHost();
}

X11TrayWatch::~X11TrayWatch() = default;

bool X11TrayWatch::HasHost() const
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool X11TrayWatch::nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/)
{
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    constexpr unsigned Sent = 0x80; // by another client
    if ((event->response_type & ~Sent) != XCB_CLIENT_MESSAGE)
        return false;
    const auto* note = static_cast<const xcb_client_message_event_t*>(message);
    if (note->type == m_manager && note->data.data32[1] == m_selection)
        m_onHost();
    return false;
}

} // namespace velmo::qt
