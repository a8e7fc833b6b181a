#pragma once

#include <QSocketNotifier>

#include <array>
#include <functional>
#include <memory>

namespace velmo::qt {

/// Turns SIGTERM, SIGINT, SIGHUP and the end of the desktop's session into one call of `handler`
/// each, on the user-interface thread and through the event entry. At most one exists at a time,
/// made after the application object; destroying it gives the signals their former meaning back. If
/// the pipe cannot be made, the signals keep theirs.
class SignalWatcher
{
public:
    explicit SignalWatcher(std::function<void()> handler);
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;
    ~SignalWatcher();

private:
    struct SavedActions;

    void Drain();

    std::function<void()> m_handler;
    std::array<int, 2> m_pipe{-1, -1};
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<SavedActions> m_saved;
    QObject m_context; ///< ends the connection to the session manager with this object
};

} // namespace velmo::qt
