#pragma once

#include "Environment.h"
#include "FileHandle.h"
#include "InstancePaths.h"
#include "InstanceServer.h"

#include "ports/FdWatcher.h"
#include "ports/Instance.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

/// Single-instance control by an advisory lock and a socket beside it.
///
/// The mutex is an exclusive `flock` on a file that holds the owner's process id; the kernel gives
/// it back when the process ends, however that comes about. The socket's name holds the process id
/// too. A socket that refuses connections was left by a process that was killed, and is removed by
/// whoever meets it.
class LinuxInstance final : public ports::Instance
{
public:
    LinuxInstance(const Environment& environment, ports::FdWatcher& watcher);
    ~LinuxInstance() override;

    LinuxInstance(const LinuxInstance&) = delete;
    LinuxInstance& operator=(const LinuxInstance&) = delete;

    [[nodiscard]] bool CreateInstanceMutex(const std::string& name) override;
    void MarkMainWindow(ports::InstanceEvents events) override;
    [[nodiscard]] std::optional<ports::RunningInstance> FindRunningInstance(
        std::chrono::steady_clock::time_point deadline) override;
    bool IsWindowVisible(const ports::RunningInstance& instance,
                         std::chrono::steady_clock::time_point deadline) override;
    bool Send(const ports::RunningInstance& instance,
              const ports::HandOverRecord& record,
              std::chrono::steady_clock::time_point deadline) override;
    bool ActivateWindow(const ports::RunningInstance& instance,
                        std::chrono::steady_clock::time_point deadline) override;
    void ReleaseInstance() override;

private:
    bool IsMutexHeld() const;
    std::optional<std::string> SocketOfHolder() const;
    std::optional<std::string> FirstThatAnswers(
        std::chrono::steady_clock::time_point deadline) const;

    std::optional<InstancePaths> m_paths;
    std::string m_activationToken;
    ports::FdWatcher& m_watcher;
    std::string m_mutexPath;
    FileHandle m_mutex;
    std::unique_ptr<InstanceServer>
        m_server; ///< kept, but stopped, once released: its handler may be running
};

} // namespace velmo
