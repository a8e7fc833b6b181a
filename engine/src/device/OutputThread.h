#pragma once

#include <functional>
#include <thread>

namespace velmo::engine {

/// Starts a thread that takes no signal of the process and bears `name` (at most 15 bytes).
/// Throws std::system_error if the system refuses one.
[[nodiscard]] std::thread StartEngineThread(const char* name, std::function<void()> body);

/// Asks for real-time scheduling of the calling thread, unless it has that. Without the right to it
/// all stays as it is.
void AskForRealTime() noexcept;

/// Asks for a share of the processor above that of other programs for the calling thread. Without
/// the right to it all stays as it is.
void AskForPriority() noexcept;

} // namespace velmo::engine
