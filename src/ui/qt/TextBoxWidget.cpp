#include "TextBoxWidget.h"

#include "DesktopStyle.h"
#include "QtText.h"

#include <QPlainTextEdit>
#include <QVariant>

namespace velmo::qt {

namespace {

/// The look of text on the black glass of the program's own windows.
void TakeGlass(QPlainTextEdit& edit)
{
    edit.setFrameShape(QFrame::NoFrame);
    QPalette colours = edit.palette();
    colours.setColor(QPalette::Base, QColor(1, 1, 1));
    colours.setColor(QPalette::Text, QColor(0xe3, 0xe8, 0xed));
    edit.setPalette(colours);
}

} // namespace

TextBoxWidget::TextBoxWidget(controls::TextBox& box, ControlHost& host, QWidget* parent)
    : ControlWidget(box, host, parent)
    , m_box(box)
    , m_edit(new QPlainTextEdit(this))
{
    m_edit->setTabChangesFocus(true);
    if (!UsesDesktopStyle(*this))
        TakeGlass(*m_edit);
    QObject::connect(m_edit, &QPlainTextEdit::textChanged, this, [this] {
        m_box.Text = ToBytes(m_edit->toPlainText());
    });
}

void TextBoxWidget::Sync()
{
    ControlWidget::Sync();
    m_edit->setReadOnly(m_box.Locked);
    m_edit->setAccessibleName(AccessibleLabel());
    const QString text = FromBytes(m_box.Text.Get());
    if (text == property("text").toString())
        return;
    setProperty("text", text);
    // Setting what the user has just typed would move his cursor.
    if (text == m_edit->toPlainText())
        return;
    const QSignalBlocker isOurs(m_edit); // the control keeps its own line ends
    m_edit->setPlainText(text);
}

QAccessible::Role TextBoxWidget::AccessibleRole() const
{
    return QAccessible::Grouping;
}

QString TextBoxWidget::AccessibleText() const
{
    return property("text").toString();
}

void TextBoxWidget::resizeEvent(QResizeEvent* /*event*/)
{
    m_edit->setGeometry(rect());
}

} // namespace velmo::qt
