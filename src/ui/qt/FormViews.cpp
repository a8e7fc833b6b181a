// What the windows have to do with each other: those of a block move at once, and a window goes
// with its owner.

#include "FormView.h"

#include <QApplication>

namespace velmo::qt {

using controls::WindowState;

std::vector<FormView*> FormView::AllViews()
{
    std::vector<FormView*> views;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* view = dynamic_cast<FormView*>(window))
            views.push_back(view);
    return views;
}

/// Null if no view shows that form.
FormView* FormView::ViewOf(const controls::Form* form)
{
    for (FormView* view : AllViews())
        if (&view->m_form == form)
            return view;
    return nullptr;
}

/// All that have moved by now, also those whose turn in the queue is still to come: a block is
/// never sent in parts.
void FormView::SendMoves()
{
    std::vector<X11Move> moves;
    for (FormView* view : AllViews()) {
        if (view->m_isBuilt)
            view->m_place.Sync();
        if (const auto move = view->m_place.TakeMove())
            moves.push_back(*move);
    }
    MoveX11(std::move(moves));
}

void FormView::BeginDrag()
{
    for (FormView* view : AllViews())
        view->m_place.TakeFromManager();
    m_place.BeginDrag();
}

void FormView::EndDrag()
{
    if (!m_place.IsDragging())
        return;
    SendMoves();
    for (FormView* view : AllViews())
        view->m_place.GiveToManager();
    SendMoves();
    m_place.EndDrag();
}

/// A window goes with its owner when that is minimised, also where no window manager sees to it.
bool FormView::IsWanted() const
{
    const bool isOwnerAway =
        m_form.Owner != nullptr && m_form.Owner->State.Get() == WindowState::Minimized;
    return m_form.Visible && !isOwnerAway;
}

void FormView::TellOwned()
{
    if (std::exchange(m_ownedState, m_form.State) == m_form.State.Get())
        return;
    for (FormView* view : AllViews())
        if (view->m_form.Owner == &m_form)
            view->QueueFlush();
}

} // namespace velmo::qt
