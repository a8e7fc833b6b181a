#pragma once

#include <functional>
#include <thread>

namespace velmo::engine {

/// Starts a thread that takes no signal of the process and bears `name` (at most 15 bytes).
/// Throws std::system_error if the system refuses one.
[[nodiscard]] std::thread StartEngineThread(const char* name, std::function<void()> body);

/// Asks for real-time scheduling of the calling thread. Without the right to it all stays as it is.
void AskForRealTime() noexcept;

} // namespace velmo::engine
