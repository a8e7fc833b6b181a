#include "cMagneticWnd.h"

#include "controls/WindowRect.h"

namespace velmo {

using controls::Form;
using ports::ScreenPoint;
using ports::ScreenRect;

cMagneticWnd::cMagneticWnd(ports::Screens& screens)
    : m_screens(screens)
{}

cMagneticWnd::~cMagneticWnd()
{
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        Unhook(*m_wnds[i].hWnd);
}

bool cMagneticWnd::AddWindow(Form* hWnd, Form* hWndParent)
{
    if (hWnd == nullptr || IndexOfWindow(hWnd) != 0)
        return false;
    m_wnds.push_back({.hWnd = hWnd, .hWndParent = hWndParent});
    m_rects.emplace_back();
    RecalcGlue();
    Hook(*hWnd);
    return true;
}

bool cMagneticWnd::RemoveWindow(const Form* hWnd)
{
    const std::size_t index = IndexOfWindow(hWnd);
    if (index == 0)
        return false;
    Unhook(*m_wnds[index].hWnd);
    m_wnds.erase(m_wnds.begin() + static_cast<std::ptrdiff_t>(index));
    m_rects.pop_back();
    for (WndRecord& record : m_wnds)
        if (record.hWndParent == hWnd)
            record.hWndParent = nullptr;
    RecalcGlue();
    return true;
}

void cMagneticWnd::CheckGlueing()
{
    RecalcGlue();
}

std::vector<Form*> cMagneticWnd::Windows() const
{
    std::vector<Form*> windows;
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        windows.push_back(m_wnds[i].hWnd);
    return windows;
}

std::vector<Form*> cMagneticWnd::BlockOf(const Form& form) const
{
    const WndRecord& own = m_wnds[IndexOfWindow(&form)];
    const Form* const head = own.Glued ? own.hWndParent : &form;
    std::vector<Form*> block;
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        if (m_wnds[i].hWnd == head || IsCarriedBy(i, *head))
            block.push_back(m_wnds[i].hWnd);
    return block;
}

void cMagneticWnd::Hook(Form& form)
{
    form.EnterSizeMove = [this, &form](ScreenPoint cursor) { OnEnterSizeMove(form, cursor); };
    form.Moving = [this, &form](ScreenPoint cursor, ScreenRect& rect) {
        OnMoving(form, cursor, rect);
    };
    form.ExitSizeMove = [this] { RecalcGlue(); };
    form.SysCommand = [this] { RecalcGlue(); };
}

void cMagneticWnd::Unhook(Form& form)
{
    form.EnterSizeMove = nullptr;
    form.Moving = nullptr;
    form.ExitSizeMove = nullptr;
    form.SysCommand = nullptr;
}

/// 0 if it is not registered.
std::size_t cMagneticWnd::IndexOfWindow(const Form* hWnd) const
{
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        if (m_wnds[i].hWnd == hWnd)
            return i;
    return 0;
}

bool cMagneticWnd::IsCarriedBy(std::size_t index, const Form& form) const
{
    return m_wnds[index].Glued && m_wnds[index].hWndParent == &form;
}

void cMagneticWnd::RecalcGlue()
{
    m_grid = controls::PixelGrid(m_screens.Scale());
    for (std::size_t i = 1; i < m_wnds.size(); ++i) {
        m_rects[i] = controls::WindowRect(*m_wnds[i].hWnd, m_grid);
        m_wnds[i].Glued = false;
    }
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        if (const std::size_t parent = IndexOfWindow(m_wnds[i].hWndParent); parent != 0)
            m_wnds[i].Glued = RectsTouch(m_rects[parent], m_rects[i]);
    // A chain of siblings may be as long as there are windows.
    for (std::size_t round = 1; round < m_wnds.size(); ++round)
        for (std::size_t i = 1; i < m_wnds.size(); ++i)
            for (std::size_t j = 1; m_wnds[i].Glued && j < m_wnds.size(); ++j)
                if (j != i && !m_wnds[j].Glued && m_wnds[j].hWndParent == m_wnds[i].hWndParent)
                    m_wnds[j].Glued = RectsTouch(m_rects[i], m_rects[j]);
}

void cMagneticWnd::OnEnterSizeMove(const Form& form, ScreenPoint cursor)
{
    m_grid = controls::PixelGrid(m_screens.Scale());
    m_snapPixels = m_grid.FromLogical(m_snapWidth);
    m_rects[0] = m_screens.WorkArea(cursor);
    for (std::size_t i = 1; i < m_wnds.size(); ++i)
        m_rects[i] =
            m_wnds[i].hWnd->Zoomed ? m_rects[0] : controls::WindowRect(*m_wnds[i].hWnd, m_grid);
    m_cursorStart = cursor;
    const ScreenRect& own = m_rects[IndexOfWindow(&form)];
    m_dragOffset = {.x = own.left - cursor.x, .y = own.top - cursor.y};
}

void cMagneticWnd::OnMoving(const Form& form, ScreenPoint cursor, ScreenRect& rect)
{
    m_cursorNow = cursor;
    rect = rect.MovedBy(m_cursorNow.x + m_dragOffset.x - rect.left,
                        m_cursorNow.y + m_dragOffset.y - rect.top);
    const SnapShift shift = ShiftOf(form, rect);
    rect = rect.MovedBy(shift.dx, shift.dy);
    const ScreenRect& start = m_rects[IndexOfWindow(&form)];
    for (std::size_t i = 1; i < m_wnds.size(); ++i) {
        if (!IsCarriedBy(i, form))
            continue;
        controls::MoveWindow(*m_wnds[i].hWnd,
                             m_grid,
                             m_rects[i].left - start.left + rect.left,
                             m_rects[i].top - start.top + rect.top);
    }
}

/// The window's own targets first, then those of each window it carries: a carried one snaps, too,
/// and can pull the whole block.
SnapShift cMagneticWnd::ShiftOf(const Form& form, const ScreenRect& rect) const
{
    SnapShift shift;
    const std::size_t own = IndexOfWindow(&form);
    for (std::size_t i = 0; i < m_wnds.size(); ++i)
        if (i != own && !IsCarriedBy(i, form))
            SnapTest(rect, m_rects[i], m_snapPixels, shift);
    for (std::size_t i = 1; i < m_wnds.size(); ++i) {
        if (!IsCarriedBy(i, form))
            continue;
        const ScreenRect carried =
            m_rects[i].MovedBy(m_cursorNow.x - m_cursorStart.x, m_cursorNow.y - m_cursorStart.y);
        for (std::size_t j = 0; j < m_wnds.size(); ++j)
            if (j != i && j != own && !m_wnds[j].Glued)
                SnapTest(carried, m_rects[j], m_snapPixels, shift);
    }
    return shift;
}

} // namespace velmo
