#include "InstanceServer.h"

#include "LocalSocket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <utility>

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velmo {

namespace {

constexpr std::size_t MostClients = 64;
constexpr std::size_t MostBytesPerNotice = std::size_t{256} * 1024;
constexpr std::chrono::seconds Patience{5};

bool PollFor(int poll, int fd)
{
    epoll_event event = {};
    event.events = EPOLLIN;
    return ::epoll_ctl(poll, EPOLL_CTL_ADD, fd, &event) == 0;
}

/// Sets a flag while it lives.
class Flagged final
{
public:
    explicit Flagged(bool& flag)
        : m_flag(flag)
    {
        // The flag is another object's: it is set, not initialised.
        m_flag = true; // NOLINT(cppcoreguidelines-prefer-member-initializer)
    }

    ~Flagged() { m_flag = false; }

    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;

private:
    bool& m_flag;
};

} // namespace

InstanceServer::InstanceServer(std::string path,
                               ports::InstanceEvents events,
                               ports::FdWatcher& watcher)
    : m_path(std::move(path))
    , m_events(std::move(events))
    , m_listener(ListenAt(m_path))
    , m_poll(::epoll_create1(EPOLL_CLOEXEC))
{
    if (m_listener.IsOpen() && m_poll.IsOpen() && PollFor(m_poll.Get(), m_listener.Get()))
        m_watch = watcher.WatchReadable(m_poll.Get(), [this] { Service(); });
}

InstanceServer::~InstanceServer()
{
    Stop();
}

void InstanceServer::Stop()
{
    m_watch.reset();
    m_clients.clear();
    if (m_listener.IsOpen())
        ::unlink(m_path.c_str());
    m_listener.Close();
    m_poll.Close();
}

void InstanceServer::Service()
{
    AcceptWaiting();
    for (Client& client : m_clients)
        if (client.state == RequestState::Incomplete)
            ReadFrom(client);
    std::erase_if(m_clients, [](const Client& c) { return c.state == RequestState::Invalid; });
    if (!m_answering)
        AnswerComplete();
}

void InstanceServer::AcceptWaiting()
{
    for (;;) {
        FileHandle handle(
            ::accept4(m_listener.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!handle.IsOpen())
            return;
        if (!IsPeerOurs(handle.Get()) || !PollFor(m_poll.Get(), handle.Get()))
            continue;
        DropStale();
        m_clients.push_back({std::move(handle),
                             std::chrono::steady_clock::now(),
                             {},
                             {},
                             RequestState::Incomplete});
    }
}

void InstanceServer::DropStale()
{
    const auto tooOld = std::chrono::steady_clock::now() - Patience;
    std::erase_if(m_clients, [&](const Client& c) {
        return c.state == RequestState::Incomplete && c.since < tooOld;
    });
    if (m_clients.size() < MostClients)
        return;
    const auto oldest = std::find_if(m_clients.begin(), m_clients.end(), [](const Client& c) {
        return c.state == RequestState::Incomplete;
    });
    if (oldest != m_clients.end())
        m_clients.erase(oldest);
}

void InstanceServer::ReadFrom(Client& client)
{
    std::array<char, 16384> buffer{};
    std::size_t total = 0;
    while (client.state == RequestState::Incomplete && total < MostBytesPerNotice) {
        const ssize_t count = ::recv(client.handle.Get(), buffer.data(), buffer.size(), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN)
            return;
        if (count <= 0) {
            client.state = RequestState::Invalid;
            return;
        }
        total += static_cast<std::size_t>(count);
        client.received.append(buffer.data(), static_cast<std::size_t>(count));
        client.state = DecodeRequest(client.received, client.request);
    }
    // A complete request waits for its turn; what its sender does meanwhile is no news.
    if (client.state == RequestState::Complete)
        ::epoll_ctl(m_poll.Get(), EPOLL_CTL_DEL, client.handle.Get(), nullptr);
}

void InstanceServer::AnswerComplete()
{
    const Flagged answering(m_answering);
    for (;;) {
        const auto next = std::find_if(m_clients.begin(), m_clients.end(), [](const Client& c) {
            return c.state == RequestState::Complete;
        });
        if (next == m_clients.end())
            return;
        const Client client = std::move(*next);
        m_clients.erase(next);
        // One request that fails must not hold up those behind it.
        try {
            Answer(client);
        } catch (const std::exception& error) {
            static_cast<void>(std::fprintf(stderr, "velmo: %s\n", error.what()));
        }
    }
}

void InstanceServer::Answer(const Client& client) const
{
    InstanceAnswer answer = InstanceAnswer::Yes;
    const ports::HandOverRecord& record = client.request.record;
    switch (client.request.question) {
    case InstanceQuestion::Visible:
        if (!m_events.isVisible || !m_events.isVisible())
            answer = InstanceAnswer::No;
        break;
    case InstanceQuestion::Activate:
        if (m_events.activate)
            m_events.activate(record.bytes);
        break;
    case InstanceQuestion::HandOver:
        if (m_events.handOver)
            m_events.handOver(record);
        break;
    }
    const char byte = static_cast<char>(answer);
    ::send(client.handle.Get(), &byte, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace velmo
