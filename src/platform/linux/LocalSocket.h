#pragma once

#include "FileHandle.h"

#include <chrono>
#include <string>

namespace velmo {

using Deadline = std::chrono::steady_clock::time_point;

/// Milliseconds until then, rounded up; 0 once it is past.
int RemainingMs(Deadline deadline);

/// How a connection came out.
enum class ConnectResult
{
    Connected,
    Dead,  ///< nobody listens there, or nothing is there
    Other, ///< another user's, or no time was left
};

/// A connection to a socket in the file system. `handle` is open, and does not block, if `result`
/// is `Connected`.
struct Connection
{
    ConnectResult result = ConnectResult::Other;
    FileHandle handle;
};

/// Connects; waits while the listener's queue is full, at most until `deadline`. The listener must
/// be of our own user.
Connection ConnectTo(const std::string& path, Deadline deadline);

/// A listening socket at that path, which appears there only once it listens, and then in place of
/// what was there. It does not block. Closed if it cannot be made.
FileHandle ListenAt(const std::string& path);

/// Whether the process at the other end runs under our own user.
bool IsPeerOurs(int fd);

/// Waits until `fd` is ready for `events` of `poll`. False if `deadline` passes before.
bool WaitUntilReady(int fd, short events, Deadline deadline);

} // namespace velmo
