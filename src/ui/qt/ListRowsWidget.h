#pragma once

#include "ControlWidget.h"
#include "LabelEdit.h"
#include "RowPainter.h"

#include "controls/ListRows.h"

#include <QBasicTimer>

#include <vector>

namespace velmo::qt {

/// Shows as many rows of a list as its control says, each of the same height, and turns mouse, keys
/// and drops into the list's events. What it costs depends on the rows that are seen, not on those
/// that there are; only rows that look different are painted anew.
class ListRowsWidget final : public ControlWidget
{
public:
    ListRowsWidget(controls::ListRows& rows, ControlHost& host, QWidget* parent);
    ~ListRowsWidget() override;
    ListRowsWidget(const ListRowsWidget&) = delete;
    ListRowsWidget& operator=(const ListRowsWidget&) = delete;

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;

    controls::ListRows& Rows() const { return m_rows; }
    /// Where a row of the list stands in the widget; empty while it is out of view.
    QRect PlaceOf(std::size_t row) const;
    /// The row at that height; 0 if there is none.
    std::size_t RowAt(int y) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    /// What the last `Sync` found, to tell what changes.
    struct Shown
    {
        std::vector<RowLook> looks; ///< one for each row that can be seen
        std::size_t first = 0;
        std::size_t focus = 0;
    };

    int RowHeight() const;
    QRect PlaceAt(std::size_t index) const;
    RowLook LookAt(std::size_t index) const;
    void FollowRows();
    void ScrollLooks(std::size_t firstBefore);
    void TellFocus(std::size_t before);
    void SetPointer(int y);
    void ChooseByMouse(const QMouseEvent& event);
    bool MoveByKey(const QKeyEvent& event);
    void OpenMenu();
    void StartEdit();
    void PlaceEdit();
    void EndEdit(LabelEditEnd how);

    controls::ListRows& m_rows;
    RowPainter m_painter;
    Shown m_shown;
    int m_pointerY = -1; ///< -1: the pointer is elsewhere
    QBasicTimer m_hover; ///< until the row under the pointer is selected
    int m_wheel = 0;     ///< what is left of a step
    bool m_isDoubleClick = false;
    LabelEdit* m_edit = nullptr; ///< a child of this widget, which owns it
    std::size_t m_editedRow = 0;
};

} // namespace velmo::qt
