#pragma once

#include "ControlHost.h"

#include "controls/Control.h"

#include <QAccessible>
#include <QWidget>

namespace velmo::qt {

/// The widget of one control: keeps its place, tool tip and state, and turns the mouse into the
/// control's events. Its object name is the control's name, its property `text` the text it shows,
/// if any. What it shows is drawn by the classes derived from it.
class ControlWidget : public QWidget
{
public:
    /// `parent` is the form's window. The control must outlive the widget.
    ControlWidget(controls::Control& control, ControlHost& host, QWidget* parent);
    ~ControlWidget() override;
    ControlWidget(const ControlWidget&) = delete;
    ControlWidget& operator=(const ControlWidget&) = delete;

    /// Takes over what has changed of the control; asks for a repaint only if the picture changes
    /// by it.
    virtual void Sync();

    /// For screen readers: what the control is, what it shows, and where its slider stands (below
    /// 0: it has none).
    virtual QAccessible::Role AccessibleRole() const;
    virtual QString AccessibleText() const;
    virtual double AccessibleShare() const;
    QString AccessibleLabel() const;

protected:
    const ControlHost& Host() const;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    friend class FormView;

    controls::Control& m_control;
    ControlHost& m_host;
    bool m_isDirty = false; ///< kept by the host
};

/// The mouse event as logic takes it. A move bears the button that is held, the left one before the
/// others.
controls::MouseEvent ToMouseEvent(const QMouseEvent& event);

} // namespace velmo::qt
