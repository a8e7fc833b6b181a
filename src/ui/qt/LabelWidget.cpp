#include "LabelWidget.h"

#include "DesktopStyle.h"
#include "GlowingText.h"
#include "PutPixels.h"
#include "QtFont.h"
#include "QtText.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>
#include <cmath>

namespace velmo::qt {

LabelWidget::LabelWidget(controls::Label& label, ControlHost& host, QWidget* parent)
    : ControlWidget(label, host, parent)
    , m_label(label)
{
    setAttribute(Qt::WA_OpaquePaintEvent, label.Text == controls::LabelText::Drawn);
    setAttribute(Qt::WA_NoSystemBackground);
}

void LabelWidget::Sync()
{
    ControlWidget::Sync();
    Look look{.caption = m_label.Caption,
              .fore = m_label.ForeColor,
              .back = m_label.BackColor,
              .font = m_label.Font,
              .align = m_label.Align,
              .overflow = m_label.Overflow};
    if (look == m_look)
        return;
    const bool isNewText = look.caption != m_look.caption;
    if (look.font != m_look.font)
        m_font.reset();
    m_look = std::move(look);
    m_text = FromBytes(m_look.caption);
    m_running.Show(m_text);
    if (!isNewText || !ShowTurn())
        update();
    if (isNewText && QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(this, m_text);
        QAccessible::updateAccessibility(&change);
    }
}

QAccessible::Role LabelWidget::AccessibleRole() const
{
    return m_label.Click ? QAccessible::PushButton : QAccessible::StaticText;
}

QString LabelWidget::AccessibleText() const
{
    return m_text;
}

void LabelWidget::paintEvent(QPaintEvent* /*event*/)
{
    if (UsesDesktopStyle(*this)) {
        PaintInStyle();
        return;
    }
    if (m_label.Text == controls::LabelText::Printed)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), ToQColor(m_look.back));
    if (!m_text.isEmpty() && IsTextDrawn())
        PaintText(painter);
}

/// A label that can be clicked is a button there.
void LabelWidget::PaintInStyle()
{
    QStylePainter painter(this);
    painter.fillRect(rect(), palette().window());
    const QString text = Host().IsTextShown() ? m_text : QString();
    if (m_label.Click) {
        QStyleOptionButton button;
        button.initFrom(this);
        button.state |= QStyle::State_Raised;
        button.text = text;
        painter.drawControl(QStyle::CE_PushButton, button);
        return;
    }
    const bool isCentred = m_look.align == controls::TextAlign::Centre;
    painter.drawItemText(rect(),
                         Qt::AlignVCenter | (isCentred ? Qt::AlignHCenter : Qt::AlignLeft),
                         palette(),
                         isEnabled(),
                         text,
                         QPalette::WindowText);
}

/// The next turn of a text that runs. False if it's to be painted.
bool LabelWidget::ShowTurn()
{
    if (IsRingShown() || !IsTextDrawn() || UsesDesktopStyle(*this))
        return false;
    const QImage* const picture = RunningPicture();
    return picture != nullptr && PutPixels(*this, *picture, picture->rect());
}

bool LabelWidget::IsTextDrawn() const
{
    return m_label.Text == controls::LabelText::Drawn && Host().IsTextShown();
}

/// Null if the text doesn't run, or wouldn't look the same so.
const QImage* LabelWidget::RunningPicture()
{
    const bool canRun =
        m_look.align == controls::TextAlign::Left && m_look.overflow == controls::TextOverflow::Cut;
    if (!canRun || !m_running.Runs())
        return nullptr;
    const QImage& picture = m_running.Picture({.font = Font(),
                                               .ink = ToQColor(m_look.fore),
                                               .ground = ToQColor(m_look.back),
                                               .size = size(),
                                               .ratio = devicePixelRatioF(),
                                               .baseline = Baseline(Font()),
                                               .glow = m_label.Glow});
    return picture.isNull() ? nullptr : &picture;
}

const QFont& LabelWidget::Font()
{
    if (!m_font)
        m_font = ToQFont(m_look.font);
    return *m_font;
}

/// Capitals stand in the middle of the height: many labels are lower than their font's full line.
double LabelWidget::Baseline(const QFont& font) const
{
    return std::round((height() + QFontMetricsF(font).capHeight()) / 2);
}

void LabelWidget::PaintText(QPainter& painter)
{
    if (const QImage* const picture = RunningPicture()) {
        painter.drawImage(0, 0, *picture);
        return;
    }
    QFont font = Font();
    const auto textWidth = [&] { return QFontMetricsF(font).horizontalAdvance(m_text); };
    if (m_look.overflow == controls::TextOverflow::Shrink && textWidth() > width())
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * width() / textWidth())));
    const double spare = m_look.align == controls::TextAlign::Centre ? width() - textWidth() : 0;
    painter.setFont(font);
    painter.setPen(ToQColor(m_look.fore));
    const QPointF start(std::max(spare, 0.0) / 2, Baseline(font));
    DrawGlowingText(painter, start, m_text, m_label.Glow);
}

} // namespace velmo::qt
