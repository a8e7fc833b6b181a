#include "LinuxInstance.h"

#include "InstanceSender.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr int RetryMs = 20;

/// Others hold the lock for an instant when they look whether it is held: only the third refusal
/// counts.
bool LockAlone(int fd)
{
    constexpr int Tries = 3;
    for (int i = 0; i < Tries; ++i) {
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0)
            return true;
        ::poll(nullptr, 0, 1);
    }
    return false;
}

void WriteProcessId(int fd)
{
    const std::string text = std::to_string(::getpid());
    // Without it others find the player by its socket alone.
    if (::ftruncate(fd, 0) == 0) [[maybe_unused]]
        const bool written = WriteAll(fd, text);
}

unsigned ReadProcessId(int fd)
{
    std::array<char, 16> text{};
    unsigned processId = 0;
    const ssize_t size = ::pread(fd, text.data(), text.size(), 0);
    if (size > 0)
        std::from_chars(text.data(), text.data() + size, processId);
    return processId;
}

} // namespace

LinuxInstance::LinuxInstance(const Environment& environment, ports::FdWatcher& watcher)
    : m_paths(PrepareInstancePaths(environment))
    , m_activationToken(environment.activationToken)
    , m_watcher(watcher)
{}

LinuxInstance::~LinuxInstance()
{
    LinuxInstance::ReleaseInstance();
}

bool LinuxInstance::CreateInstanceMutex(const std::string& name)
{
    if (!m_paths)
        return true;
    constexpr mode_t PrivateMode = 0600;
    m_mutexPath = m_paths->directory + name;
    FileHandle mutex(
        ::open(m_mutexPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, PrivateMode));
    if (!mutex.IsOpen())
        return true;
    if (!LockAlone(mutex.Get()))
        return false;
    WriteProcessId(mutex.Get());
    m_mutex = std::move(mutex);
    return true;
}

void LinuxInstance::MarkMainWindow(ports::InstanceEvents events)
{
    if (!m_paths)
        return;
    const std::string path = m_paths->SocketOf(static_cast<unsigned>(::getpid()));
    m_server = std::make_unique<InstanceServer>(path, std::move(events), m_watcher);
}

std::optional<ports::RunningInstance> LinuxInstance::FindRunningInstance(
    std::chrono::steady_clock::time_point deadline)
{
    if (!m_paths)
        return std::nullopt;
    for (;;) {
        // Asked first: a player that ends between the two looks must not count as one that loads.
        const bool isLoading = IsMutexHeld();
        if (const auto address = FirstThatAnswers(deadline))
            return ports::RunningInstance{*address};
        const int rest = RemainingMs(deadline);
        if (!isLoading || rest == 0)
            return std::nullopt;
        ::poll(nullptr, 0, std::min(rest, RetryMs));
    }
}

bool LinuxInstance::IsWindowVisible(const ports::RunningInstance& instance,
                                    std::chrono::steady_clock::time_point deadline)
{
    const InstanceRequest request{InstanceQuestion::Visible, {}};
    return Ask(instance.address, request, deadline) == InstanceAnswer::Yes;
}

bool LinuxInstance::Send(const ports::RunningInstance& instance,
                         const ports::HandOverRecord& record,
                         std::chrono::steady_clock::time_point deadline)
{
    const InstanceRequest request{InstanceQuestion::HandOver, record};
    return Ask(instance.address, request, deadline).has_value();
}

bool LinuxInstance::ActivateWindow(const ports::RunningInstance& instance,
                                   std::chrono::steady_clock::time_point deadline)
{
    const InstanceRequest request{InstanceQuestion::Activate, {.bytes = m_activationToken}};
    return Ask(instance.address, request, deadline).has_value();
}

void LinuxInstance::ReleaseInstance()
{
    m_mutex.Close();
    if (m_server != nullptr)
        m_server->Stop();
}

bool LinuxInstance::IsMutexHeld() const
{
    const FileHandle mutex(::open(m_mutexPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    return mutex.IsOpen() && ::flock(mutex.Get(), LOCK_SH | LOCK_NB) != 0;
}

std::optional<std::string> LinuxInstance::SocketOfHolder() const
{
    const FileHandle mutex(::open(m_mutexPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    const unsigned processId = mutex.IsOpen() ? ReadProcessId(mutex.Get()) : 0;
    if (processId == 0)
        return std::nullopt;
    return m_paths->SocketOf(processId);
}

/// The holder's socket, else the newest, that takes a connection.
std::optional<std::string> LinuxInstance::FirstThatAnswers(
    std::chrono::steady_clock::time_point deadline) const
{
    std::vector<std::string> sockets = m_paths->Sockets();
    const std::optional<std::string> holders = SocketOfHolder();
    std::stable_partition(
        sockets.begin(), sockets.end(), [&](const std::string& path) { return path == holders; });
    for (const std::string& path : sockets) {
        const ConnectResult result = ConnectTo(path, deadline).result;
        if (result == ConnectResult::Connected)
            return path;
        if (result == ConnectResult::Dead)
            ::unlink(path.c_str());
    }
    return std::nullopt;
}

} // namespace velmo
