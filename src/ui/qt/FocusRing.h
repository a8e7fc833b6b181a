#pragma once

#include <QObject>

class QWidget;

namespace velmo::qt {

/// The thin ring in the control that has the keyboard's focus. It is shown once keys or a screen
/// reader have brought the focus, and goes with the next press of the mouse in its window; the
/// focus then goes back to the window's list, or to the window itself, where it also is at first.
class FocusRing final : public QObject
{
public:
    /// `widget` is to tell of its focus and to call `Paint` after it has painted itself.
    explicit FocusRing(QWidget& widget);

    void FocusIn(Qt::FocusReason reason);
    void FocusOut(Qt::FocusReason reason);
    void GiveFocusBack();

    /// Not while the window is behind another one.
    bool IsShown() const;
    void Paint() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Show(bool isShown);

    QWidget& m_widget;
    bool m_isShown = false; ///< while the window is the one that has the keyboard
};

} // namespace velmo::qt
