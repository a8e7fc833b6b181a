#pragma once

#include <functional>

namespace velmo {

/// Calls an operation that the object graph may have left unbound.
template<class... Parameters, class... Arguments>
void CallIfSet(const std::function<void(Parameters...)>& operation, const Arguments&... arguments)
{
    if (operation)
        operation(arguments...);
}

} // namespace velmo
