#pragma once

#include "support/TempDir.h"

#include <string>

#include <sys/types.h>

namespace velmo::test {

/// A PulseAudio server of the test's own with one null sink, in a private directory. The
/// environment variable PULSE_SERVER leads every client of this process, and of its children, there
/// from now on, whether the server runs or not. What can't be done throws std::runtime_error.
class PulseServer
{
public:
    PulseServer();
    ~PulseServer() { Kill(); }
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;

    /// Starts the server, and returns when it takes connections.
    void Start();

    /// Ends the server as a crash would, and returns when it's gone. Does nothing if none runs.
    void Kill() noexcept;

    /// Stops the server's process, so that its clients get no answer, until `Continue` or `Kill`.
    void Hang() const noexcept;
    void Continue() const noexcept;

    /// Takes the sink away, or adds one.
    void RemoveSink();
    void AddSink();

    /// What `pactl ARGUMENTS` prints, with the server's answer waited for.
    std::string Control(const std::string& arguments);

private:
    TempDir m_directory;
    pid_t m_process = -1;
};

} // namespace velmo::test
