#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <functional>

struct xcb_connection_t;

namespace velmo::qt {

/// Tells when the X server has a host for tray icons, as the owner of a selection: at once, or as
/// soon as one announces itself. On another window system it never does. User-interface thread.
class X11TrayWatch final : private QAbstractNativeEventFilter
{
public:
    /// `onHost` is called once for every appearance of a host, the first time perhaps within this
    /// call.
    explicit X11TrayWatch(std::function<void()> onHost);
    ~X11TrayWatch() override;
    X11TrayWatch(const X11TrayWatch&) = delete;
    X11TrayWatch& operator=(const X11TrayWatch&) = delete;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    bool HasHost() const;

    std::function<void()> m_onHost;
    xcb_connection_t* m_connection; ///< the toolkit's
    std::uint32_t m_selection = 0;
    std::uint32_t m_manager = 0;
};

} // namespace velmo::qt
