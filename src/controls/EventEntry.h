#pragma once

#include <functional>

namespace velmo::controls {

/// The door through which every event reaches logic. Runs `handler`; whatever it throws ends that
/// handler alone: one line "velmo: <text>" goes to stderr, what was done before stays, and the
/// caller's event loop goes on.
void RunEvent(const std::function<void()>& handler) noexcept;

/// Calls an event slot through `RunEvent`; a slot that is not set does nothing.
template<class... Parameters, class... Arguments>
void CallSlot(const std::function<void(Parameters...)>& slot,
              const Arguments&... arguments) noexcept
{
    if (slot)
        RunEvent([&] { slot(arguments...); });
}

} // namespace velmo::controls
