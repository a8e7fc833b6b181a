#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

class QWidget;
struct xcb_connection_t;

namespace velmo::qt {

/// The toolkit's connection to the X server; null on other window systems.
xcb_connection_t* XcbConnection();

/// The server's window of a widget that is a window itself; 0 if it has none. The toolkit at times
/// makes another one when the widget is shown again, and doesn't tell the widget.
std::uint32_t XcbWindowOf(const QWidget& window);

/// The server's number for a name; 0 if it doesn't answer. Waits for it.
std::uint32_t XcbAtom(xcb_connection_t* connection, const std::string& name);

struct FreeXcbReply
{
    void operator()(void* reply) const { std::free(reply); } // NOLINT(*-no-malloc): C made it
};

/// A reply of the server, which is its reader's to free.
template<class Reply>
using XcbReply = std::unique_ptr<Reply, FreeXcbReply>;

} // namespace velmo::qt
