#include "ListRowsWidget.h"

#include "QtText.h"
#include "Twips.h"

#include "controls/EventEntry.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo::qt {

namespace {

/// More bytes of a text than a row has room for.
constexpr std::size_t MostBytes = 1024;

} // namespace

ListRowsWidget::ListRowsWidget(controls::ListRows& rows, ControlHost& host, QWidget* parent)
    : ControlWidget(rows, host, parent)
    , m_rows(rows)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    rows.StartLabelEdit = [this] { StartEdit(); };
    rows.SetFocus = [this] { setFocus(); };
}

ListRowsWidget::~ListRowsWidget()
{
    m_rows.StartLabelEdit = nullptr;
    m_rows.SetFocus = nullptr;
    delete std::exchange(m_edit, nullptr);
}

QAccessible::Role ListRowsWidget::AccessibleRole() const
{
    return QAccessible::List;
}

void ListRowsWidget::Sync()
{
    ControlWidget::Sync();
    const RowStyle style{.font = m_rows.Font,
                         .foreColor = m_rows.ForeColor,
                         .lengthWidth = ToPixels(m_rows.LengthColumnWidth)};
    if (m_painter.SetStyle(style))
        update();
    FollowRows();
}

int ListRowsWidget::RowHeight() const
{
    return std::max(1, height() / std::max(1, static_cast<int>(m_rows.VisibleRows())));
}

/// The place of the row that is `index` rows below the top one.
QRect ListRowsWidget::PlaceAt(std::size_t index) const
{
    return {0, static_cast<int>(index) * RowHeight(), width(), RowHeight()};
}

QRect ListRowsWidget::PlaceOf(std::size_t row) const
{
    const std::size_t first = m_rows.FirstVisibleEntry();
    const bool isSeen = row >= first && row < first + m_rows.VisibleRows() && row <= m_rows.Count();
    return isSeen && row > 0 ? PlaceAt(row - first) : QRect();
}

std::size_t ListRowsWidget::RowAt(int y) const
{
    if (y < 0 || y >= height() || m_rows.Count() == 0)
        return 0;
    const auto index = static_cast<std::size_t>(y / RowHeight());
    const std::size_t row = m_rows.FirstVisibleEntry() + index;
    return index < m_rows.VisibleRows() && row <= m_rows.Count() ? row : 0;
}

RowLook ListRowsWidget::LookAt(std::size_t index) const
{
    const std::size_t row = m_rows.FirstVisibleEntry() + index;
    if (row == 0 || row > m_rows.Count())
        return {};
    const controls::RowTexts texts = m_rows.Texts(row);
    return {.text = std::string(texts.Text.substr(0, MostBytes)),
            .length = std::string(texts.Length.substr(0, MostBytes)),
            .isFilled = true,
            .isMarked = m_rows.IsMarked(row),
            .isHot = m_rows.HotTracking && row == RowAt(m_pointerY),
            .isFramed = hasFocus() && row == m_rows.SelectedEntry()};
}

/// Repaints the rows that look different from what was last found.
void ListRowsWidget::FollowRows()
{
    m_shown.looks.resize(m_rows.VisibleRows());
    ScrollLooks(std::exchange(m_shown.first, m_rows.FirstVisibleEntry()));
    for (std::size_t index = 0; index < m_shown.looks.size(); ++index) {
        RowLook look = LookAt(index);
        if (look == m_shown.looks[index])
            continue;
        m_shown.looks[index] = std::move(look);
        update(PlaceAt(index));
    }
    if (m_edit != nullptr)
        PlaceEdit();
    TellFocus(std::exchange(m_shown.focus, m_rows.SelectedEntry()));
}

/// The rows that stay in view are moved rather than painted, where the move is one of whole pixels
/// and nothing else is drawn over them.
void ListRowsWidget::ScrollLooks(std::size_t firstBefore)
{
    const std::size_t first = m_shown.first;
    const std::size_t distance = std::max(first, firstBefore) - std::min(first, firstBefore);
    const double pixels = RowHeight() * devicePixelRatioF();
    const bool isPlain = m_edit == nullptr && !IsRingShown() && pixels == std::floor(pixels);
    if (distance == 0 || distance >= m_shown.looks.size() || !isPlain)
        return;
    const auto down = static_cast<std::ptrdiff_t>(distance);
    if (first > firstBefore)
        std::rotate(m_shown.looks.begin(), m_shown.looks.begin() + down, m_shown.looks.end());
    else
        std::rotate(m_shown.looks.begin(), m_shown.looks.end() - down, m_shown.looks.end());
    const int height = static_cast<int>(m_shown.looks.size()) * RowHeight();
    const int way = static_cast<int>(distance) * RowHeight();
    scroll(0, first > firstBefore ? -way : way, QRect(0, 0, width(), height));
}

void ListRowsWidget::TellFocus(std::size_t before)
{
    if (before == m_shown.focus || m_shown.focus == 0 || !hasFocus() || !QAccessible::isActive())
        return;
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(static_cast<int>(m_shown.focus) - 1);
    QAccessible::updateAccessibility(&focus);
}

void ListRowsWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const bool withText = Host().IsTextShown();
    for (std::size_t index = 0; index < m_shown.looks.size(); ++index) {
        const QRect place = PlaceAt(index);
        if (event->region().intersects(place))
            m_painter.Paint(painter, place, m_shown.looks[index], withText);
    }
    const int below = RowHeight() * static_cast<int>(m_shown.looks.size());
    if (below < height())
        m_painter.Paint(painter, QRect(0, below, width(), height() - below), {}, false);
}

void ListRowsWidget::resizeEvent(QResizeEvent* /*event*/)
{
    update();
}

/// The window's keys belong to its list from the start.
void ListRowsWidget::showEvent(QShowEvent* /*event*/)
{
    if (window()->focusWidget() == nullptr)
        setFocus(Qt::MouseFocusReason);
}

void ListRowsWidget::focusInEvent(QFocusEvent* event)
{
    ControlWidget::focusInEvent(event);
    m_shown.focus = 0; // so that it is told
    FollowRows();
}

void ListRowsWidget::focusOutEvent(QFocusEvent* event)
{
    ControlWidget::focusOutEvent(event);
    FollowRows();
}

void ListRowsWidget::StartEdit()
{
    const std::size_t row = m_rows.SelectedEntry();
    if (row == 0 || m_edit != nullptr)
        return;
    m_rows.EnsureVisible(row);
    m_editedRow = row;
    m_edit = new LabelEdit(
        this, FromBytes(m_rows.Texts(row).Text), [this](LabelEditEnd how) { EndEdit(how); });
    m_edit->setFont(m_painter.Font());
    m_edit->setAccessibleName(AccessibleLabel());
    PlaceEdit();
    if (m_edit != nullptr) {
        m_edit->show();
        m_edit->setFocus();
    }
}

/// The edit stays with its row, and ends with it.
void ListRowsWidget::PlaceEdit()
{
    const QRect place = PlaceOf(m_editedRow);
    if (place.isEmpty() || m_editedRow != m_rows.SelectedEntry())
        return EndEdit(LabelEditEnd::Cancel);
    constexpr int FieldMargin = 2; // the field's own, before its text
    const RowLook look = LookAt(m_editedRow - m_rows.FirstVisibleEntry());
    m_edit->setGeometry(m_painter.EditPlace(place, look).adjusted(-FieldMargin, 0, 0, 0));
}

void ListRowsWidget::EndEdit(LabelEditEnd how)
{
    LabelEdit* const edit = std::exchange(m_edit, nullptr);
    if (edit == nullptr)
        return;
    const std::string text = ToBytes(edit->text());
    if (how != LabelEditEnd::FocusOut)
        setFocus(Qt::MouseFocusReason);
    edit->hide();
    edit->deleteLater(); // it may be in an event of its own
    if (how != LabelEditEnd::Cancel && m_editedRow <= m_rows.Count())
        controls::CallSlot(m_rows.AfterLabelEdit, m_editedRow, text);
    constexpr int Enter = 13;
    if (how == LabelEditEnd::Enter)
        controls::CallSlot(m_rows.KeyDown, Enter);
}

} // namespace velmo::qt
