#pragma once

#include "ControlWidget.h"

#include "controls/Controls.h"

class QPlainTextEdit;

namespace velmo::qt {

/// A field of several lines of text. What the user types goes to the control at once.
class TextBoxWidget final : public ControlWidget
{
public:
    TextBoxWidget(controls::TextBox& box, ControlHost& host, QWidget* parent);

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;
    QString AccessibleText() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    controls::TextBox& m_box;
    QPlainTextEdit* m_edit; ///< a child of this widget, which owns it
};

} // namespace velmo::qt
