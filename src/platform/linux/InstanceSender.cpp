#include "InstanceSender.h"

#include <cerrno>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>

namespace velmo {

namespace {

bool SendAll(int fd, std::string_view bytes, Deadline deadline)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent > 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno != EINTR && (errno != EAGAIN || !WaitUntilReady(fd, POLLOUT, deadline)))
            return false;
    }
    return true;
}

} // namespace

std::optional<InstanceAnswer> Ask(const std::string& address,
                                  const InstanceRequest& request,
                                  Deadline deadline)
{
    const Connection connection = ConnectTo(address, deadline);
    const int fd = connection.handle.Get();
    if (connection.result != ConnectResult::Connected
        || !SendAll(fd, EncodeRequest(request), deadline) || !WaitUntilReady(fd, POLLIN, deadline))
        return std::nullopt;
    char answer = 0;
    if (::recv(fd, &answer, 1, 0) != 1)
        return std::nullopt;
    return static_cast<InstanceAnswer>(answer);
}

} // namespace velmo
