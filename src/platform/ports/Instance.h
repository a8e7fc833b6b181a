#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmo::ports {

/// The running player of this user, as another process of the program sees it.
struct RunningInstance
{
    std::string address; ///< where it listens
};

/// The bytes that one process hands to another.
struct HandOverRecord
{
    std::uint32_t dwData = 0; ///< kind of data, always 0
    std::string bytes;        ///< the command line; one zero byte for an empty one
};

/// What the player answers to other processes. Called on the user-interface thread.
struct InstanceEvents
{
    std::function<void(const HandOverRecord&)>
        handOver;                    ///< unset: the record is answered and dropped
    std::function<bool()> isVisible; ///< whether the main window is shown
    /// Bring the main window to the front. The text is what the asking process was given by the
    /// desktop to activate a window with; may be empty.
    std::function<void(const std::string& activationToken)> activate;
};

/// System-wide single-instance control of one user.
/// All calls come from the user-interface thread. Nothing of it outlives a process that is killed.
class Instance
{
public:
    virtual ~Instance() = default;

    /// Takes the mutex of that name for the life of the process. False if another process holds it.
    /// True as well if there is no place where it could lie: a player without a mutex beats none.
    [[nodiscard]] virtual bool CreateInstanceMutex(const std::string& name) = 0;

    /// Makes this process findable: from now on `events` are served until `ReleaseInstance`.
    virtual void MarkMainWindow(InstanceEvents events) = 0;

    /// The player that holds the mutex, else the newest one that answers. Waits until `deadline`
    /// for a player that is still loading (mutex held, nobody answers yet); nothing if there is
    /// none.
    [[nodiscard]] virtual std::optional<RunningInstance> FindRunningInstance(
        std::chrono::steady_clock::time_point deadline) = 0;

    /// Whether the main window of `instance` is shown; false too if it does not answer in time.
    virtual bool IsWindowVisible(const RunningInstance& instance,
                                 std::chrono::steady_clock::time_point deadline) = 0;

    /// Sends the record and waits for the answer, at most until `deadline`. False if none came.
    virtual bool Send(const RunningInstance& instance,
                      const HandOverRecord& record,
                      std::chrono::steady_clock::time_point deadline) = 0;

    /// Asks `instance` to come to the front; this process's activation token goes with it.
    virtual bool ActivateWindow(const RunningInstance& instance,
                                std::chrono::steady_clock::time_point deadline) = 0;

    /// Gives the mutex back and stops being findable.
    virtual void ReleaseInstance() = 0;
};

} // namespace velmo::ports
