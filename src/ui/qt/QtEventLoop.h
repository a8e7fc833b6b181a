#pragma once

#include <functional>

namespace velmo::qt {

/// What the port `Application` needs of the event loop. Made after the application object. From
/// then on the program ends by `Quit` alone, not with its last window.
class QtEventLoop
{
public:
    QtEventLoop();

    /// Runs `handler` on the user-interface thread through the event entry, once the present event
    /// has been handled. Any thread.
    void Post(std::function<void()> handler);

    /// Ends the event loop, and every modal one in it, with that exit status once the present event
    /// has been handled; also before the loop has begun. Any thread.
    void Quit(int status);
};

} // namespace velmo::qt
