#pragma once

#include <QElapsedTimer>
#include <QString>

#include <cstdint>

class QWidget;
struct xcb_connection_t;

namespace velmo::qt {

/// Gives a window its title, so that one which runs doesn't wake the process more often than it
/// moves: an X server tells a window of every change of a property, the window's own ones too,
/// which wakes two threads. So for the moment of the change the window doesn't listen. Some window
/// managers answer each title by a property of their own; there a running title goes on in longer
/// steps. User-interface thread.
class WindowTitle
{
public:
    /// The window must outlive this.
    explicit WindowTitle(QWidget& window);

    /// To be called again after a while with a title that runs: one step of it may be left out.
    void Set(const QString& title);

private:
    bool LookAtWindow();
    bool IsAnswered() const;
    bool MayWait() const;
    void MoveOn() const;
    void Listen(std::uint32_t mask) const;

    QWidget& m_window;
    xcb_connection_t* m_connection = nullptr; ///< the toolkit's; null on other window systems
    QString m_title;                          ///< that others see, at its last step
    QElapsedTimer m_sinceSet;
    std::uint32_t m_id = 0;   ///< the window that has been looked at
    std::uint32_t m_mask = 0; ///< the events that the toolkit wants of it
    std::uint32_t m_nameAtom = 0;
    std::uint32_t m_textAtom = 0;
    bool m_isAnswered = false; ///< the window manager has a title of its own making
};

} // namespace velmo::qt
