#pragma once

#include <functional>

class QObject;

namespace velmo::qt {

/// Calls `handler` when the handlers of the present event turn are done: before the event loop
/// sleeps, or begins another turn. A posted event would do the same for the price of a whole turn
/// of its own. Dropped if `context` has ended by then. What a handler queues comes in the same
/// turn. User-interface thread, with an application.
void AtTurnEnd(QObject& context, std::function<void()> handler);

} // namespace velmo::qt
