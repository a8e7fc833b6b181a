#include "ScrollBar.h"

#include <algorithm>
#include <utility>

namespace velmo::controls {

ScrollBar::ScrollBar(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::ScrollBar, std::move(name), bounds)
{}

std::int32_t ScrollBar::Position() const
{
    return m_position;
}

void ScrollBar::SetPosition(std::int32_t position)
{
    m_position = Min < Max ? std::clamp<std::int32_t>(position, Min, Max) : position;
}

} // namespace velmo::controls
