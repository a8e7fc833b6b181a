#pragma once

#include <QLineEdit>

#include <functional>

namespace velmo::qt {

enum class LabelEditEnd
{
    Enter,
    FocusOut,
    Cancel,
};

/// The field in which the user edits the text of a row. Enter and the loss of the focus end the
/// edit, Escape calls it off; no key goes past the field.
class LabelEdit final : public QLineEdit
{
public:
    LabelEdit(QWidget* parent, const QString& text, std::function<void(LabelEditEnd)> ended);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    std::function<void(LabelEditEnd)> m_ended;
};

} // namespace velmo::qt
