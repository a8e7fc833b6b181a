#pragma once

#include "Control.h"

#include <cstdint>
#include <functional>

namespace velmo::controls {

/// A vertical scroll bar: a position between two ends. With `Min` not below `Max` it only stores
/// what it is given.
class ScrollBar final : public Control
{
public:
    ScrollBar(Form& form, std::string name, Bounds bounds);

    Property<std::int32_t> Min{*this};
    Property<std::int32_t> Max{*this};

    std::int32_t Position() const;
    /// Held between `Min` and `Max` if `Min` is below `Max`. Raises no event.
    void SetPosition(std::int32_t position);

    /// The user has moved the bar: whether down the list, and the new position.
    std::function<void(bool goesDown, std::int32_t position)> Change;

private:
    Property<std::int32_t> m_position{*this};
};

} // namespace velmo::controls
