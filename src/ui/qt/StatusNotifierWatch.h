#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace velmo::qt {

/// Tells whether the session bus has a host for tray icons: first whether there is one now, and
/// again whenever one may have come. Nothing is waited for: all answers come through the event
/// loop, the first one within two seconds. User-interface thread.
class StatusNotifierWatch final : public QObject
{
public:
    explicit StatusNotifierWatch(std::function<void(bool hasHost)> onAnswer);

private:
    void AskForHost();

    std::function<void(bool)> m_onAnswer;
    QTimer m_ask; ///< what the bus's signals start
};

} // namespace velmo::qt
