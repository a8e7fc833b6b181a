#include "LabelEdit.h"

#include <QKeyEvent>

#include <limits>
#include <utility>

namespace velmo::qt {

LabelEdit::LabelEdit(QWidget* parent, const QString& text, std::function<void(LabelEditEnd)> ended)
    : QLineEdit(parent)
    , m_ended(std::move(ended))
{
    setObjectName(QStringLiteral("LabelEdit"));
    setMaxLength(std::numeric_limits<int>::max());
    setFrame(false);
    setTextMargins(0, 0, 0, 1); // as high as the row has it
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(0x08, 0x34, 0x3b));
    colours.setColor(QPalette::Window, QColor(0x08, 0x34, 0x3b));
    colours.setColor(QPalette::Text, QColor(0xea, 0xff, 0xff));
    colours.setColor(QPalette::Highlight, QColor(0x2a, 0xa4, 0xb0));
    colours.setColor(QPalette::HighlightedText, QColor(1, 1, 1));
    setPalette(colours);
    setText(text);
    selectAll();
}

void LabelEdit::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        m_ended(LabelEditEnd::Enter);
    else if (key == Qt::Key_Escape)
        m_ended(LabelEditEnd::Cancel);
    else
        QLineEdit::keyPressEvent(event);
    event->accept();
}

void LabelEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // its own menu
        m_ended(LabelEditEnd::FocusOut);
}

} // namespace velmo::qt
