#include "WindowTitle.h"

#include "Xcb.h"

#include <QGuiApplication>
#include <QWidget>

#include <xcb/xcb.h>

namespace velmo::qt {

namespace {

/// Whether a running title leads from one to the other.
bool IsRotation(const QString& one, const QString& other)
{
    return one.size() == other.size() && (one + one).contains(other);
}

} // namespace

WindowTitle::WindowTitle(QWidget& window)
    : m_window(window)
    , m_connection(XcbConnection())
{}

void WindowTitle::Set(const QString& title)
{
    if (title == m_title)
        return;
    const bool runs = IsRotation(m_title, title);
    if (!LookAtWindow()) {
        m_title = title;
        m_window.setWindowTitle(title);
        return;
    }
    if (runs && MayWait())
        return;
    m_title = title;
    m_sinceSet.start();
    // Nobody else gets a turn meanwhile, or what a window manager tells just then would be missed.
    // The server works through all of it in one go.
    xcb_grab_server(m_connection);
    Listen(m_mask & ~std::uint32_t{XCB_EVENT_MASK_PROPERTY_CHANGE});
    if (runs)
        MoveOn();
    else
        m_window.setWindowTitle(title);
    Listen(m_mask);
    xcb_ungrab_server(m_connection);
    xcb_flush(m_connection);
}

/// False if there is nothing to hush: on other window systems, and before there is a window.
bool WindowTitle::LookAtWindow()
{
    if (m_connection == nullptr || !m_window.isVisible())
        return false;
    const std::uint32_t id = XcbWindowOf(m_window);
    if (id == m_id)
        return id != 0;
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, id), nullptr));
    if (!reply)
        return false;
    m_id = id;
    m_mask = reply->your_event_mask;
    m_isAnswered = IsAnswered();
    m_nameAtom = XcbAtom(m_connection, "_NET_WM_NAME");
    m_textAtom = XcbAtom(m_connection, "UTF8_STRING");
    return true;
}

bool WindowTitle::IsAnswered() const
{
    const std::uint32_t atom = XcbAtom(m_connection, "_NET_WM_VISIBLE_NAME");
    const auto cookie = xcb_get_property(m_connection, 0, m_id, atom, XCB_ATOM_ANY, 0, 0);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

bool WindowTitle::MayWait() const
{
    constexpr qint64 StepMs = 890; // six moves of the title
    return m_isAnswered && m_sinceSet.isValid() && m_sinceSet.elapsed() < StepMs;
}

/// The toolkit would also set the title that old window managers read, by way of the locale, which
/// costs more than all else of a move. For those, and for screen readers, the title stands still.
void WindowTitle::MoveOn() const
{
    const QByteArray text = m_title.toUtf8();
    constexpr std::uint8_t BitsPerUnit = 8;
    xcb_change_property(m_connection,
                        XCB_PROP_MODE_REPLACE,
                        m_id,
                        m_nameAtom,
                        m_textAtom,
                        BitsPerUnit,
                        static_cast<std::uint32_t>(text.size()),
                        text.constData());
}

void WindowTitle::Listen(std::uint32_t mask) const
{
    xcb_change_window_attributes(m_connection, m_id, XCB_CW_EVENT_MASK, &mask);
}

} // namespace velmo::qt
