#pragma once

#include "ControlWidget.h"

#include "controls/Controls.h"

class QLineEdit;

namespace velmo::qt {

/// A field of one line of text. What the user types goes to the control at once.
class LineEditWidget final : public ControlWidget
{
public:
    LineEditWidget(controls::TextBox& box, ControlHost& host, QWidget* parent);

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    controls::TextBox& m_box;
    QLineEdit* m_edit; ///< a child of this widget, which owns it
};

} // namespace velmo::qt
