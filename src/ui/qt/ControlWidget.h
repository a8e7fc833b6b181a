#pragma once

#include "ControlHost.h"
#include "FocusRing.h"

#include "controls/Control.h"

#include <QAccessible>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>

namespace velmo::qt {

/// The widget of one control: keeps its place, tool tip and state, and turns the mouse into the
/// control's events. Its object name is the control's name. What it shows is drawn by the classes
/// derived from it; the ring of the keyboard's focus is drawn here, over it. With the focus, Space
/// and Enter press the control, and arrows, pages, Home and End move the knob of a slider.
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

    controls::Control& Model() const;
    /// Whether the focus can come to it by Tab. Of a slider's two images only the knob takes it.
    bool IsTabStop() const;
    bool IsRingShown() const;

    /// What Space does: presses the control in its middle.
    void Press();
    /// The place on the screen at which a slot acts that keys have called; nothing while the mouse
    /// has, or no slot runs.
    std::optional<QPoint> KeyPlace() const;

protected:
    ControlHost& Host() const;
    /// Runs `action`, which calls slots for keys, with `KeyPlace` at `place` of the widget.
    void ActAt(QPoint place, const std::function<void()>& action);

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    friend class FormView;

    /// What `Sync` takes over: a text that runs changes its widget often, and none of this.
    struct Standing
    {
        QRect place;
        QRect container;
        bool isEnabled = true;
        bool isVisible = true;
        bool isTabStop = false;
        std::string tip;
        std::string accessibleName;

        bool operator==(const Standing&) const = default;
    };

    bool CutToContainer();
    bool TakeKey(const QKeyEvent& event);
    bool Slide(int key);

    controls::Control& m_control;
    ControlHost& m_host;
    std::optional<Standing> m_standing; ///< nothing before the first `Sync`
    FocusRing m_ring{*this};
    std::optional<QPoint> m_keyPlace;
    bool m_isDirty = false; ///< kept by the host
};

/// The mouse event as logic takes it. A move bears the button that is held, the left one before the
/// others.
controls::MouseEvent ToMouseEvent(const QMouseEvent& event);

} // namespace velmo::qt
