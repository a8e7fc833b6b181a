#pragma once

#include "ControlWidget.h"

#include "controls/Button.h"

class QPushButton;

namespace velmo::qt {

/// A push button of the toolkit's.
class ButtonWidget final : public ControlWidget
{
public:
    ButtonWidget(controls::Button& button, ControlHost& host, QWidget* parent);

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    controls::Button& m_button;
    QPushButton* m_push; ///< a child of this widget, which owns it
};

} // namespace velmo::qt
