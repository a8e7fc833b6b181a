#pragma once

#include <exception>

namespace velmo {

/// Runs `step` and passes over a failure in it, a `RunError` or an index outside a list; everything
/// that the step did before stays.
/// False if it failed.
template<typename Step>
bool Ignoring(Step&& step)
{
    try {
        step();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace velmo
