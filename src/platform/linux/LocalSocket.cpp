#include "LocalSocket.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <optional>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr int RetryMs = 20;
constexpr int LongestQueue = 128;

std::optional<sockaddr_un> AddressOf(const std::string& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof(address.sun_path))
        return std::nullopt;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

FileHandle NewSocket()
{
    return FileHandle(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// The system's calls take every kind of address by a pointer to the common head.
template<typename Address>
auto* Head(Address& address)
{
    return reinterpret_cast<
        std::conditional_t<std::is_const_v<Address>, const sockaddr, sockaddr>*>(&address);
}

} // namespace

int RemainingMs(Deadline deadline)
{
    using std::chrono::milliseconds;
    const auto rest =
        std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    return static_cast<int>(std::clamp<milliseconds::rep>(rest, 0, INT_MAX));
}

Connection ConnectTo(const std::string& path, Deadline deadline)
{
    const std::optional<sockaddr_un> address = AddressOf(path);
    if (!address)
        return {ConnectResult::Dead, {}};
    for (;;) {
        FileHandle handle = NewSocket();
        if (!handle.IsOpen())
            return {};
        if (::connect(handle.Get(), Head(*address), sizeof(sockaddr_un)) == 0) {
            if (!IsPeerOurs(handle.Get()))
                return {};
            return {ConnectResult::Connected, std::move(handle)};
        }
        if (errno == ECONNREFUSED || errno == ENOENT)
            return {ConnectResult::Dead, {}};
        const int rest = RemainingMs(deadline);
        if ((errno != EAGAIN && errno != EINTR) || rest == 0)
            return {};
        ::poll(nullptr, 0, std::min(rest, RetryMs));
    }
}

FileHandle ListenAt(const std::string& path)
{
    // A socket that is bound and does not listen yet looks dead, and others would remove it.
    const std::string unfinished = path.substr(0, path.rfind('.')) + ".new";
    const std::optional<sockaddr_un> address = AddressOf(unfinished);
    FileHandle handle = NewSocket();
    if (!address || !handle.IsOpen())
        return {};
    ::unlink(unfinished.c_str());
    if (::bind(handle.Get(), Head(*address), sizeof(sockaddr_un)) != 0)
        return {};
    if (::listen(handle.Get(), LongestQueue) != 0
        || ::rename(unfinished.c_str(), path.c_str()) != 0) {
        ::unlink(unfinished.c_str());
        return {};
    }
    return handle;
}

bool IsPeerOurs(int fd)
{
    ucred peer = {};
    socklen_t size = sizeof(peer);
    return ::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

bool WaitUntilReady(int fd, short events, Deadline deadline)
{
    for (;;) {
        pollfd waiting{fd, events, 0};
        const int ready = ::poll(&waiting, 1, RemainingMs(deadline));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

} // namespace velmo
