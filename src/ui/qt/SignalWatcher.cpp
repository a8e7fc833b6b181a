// A signal handler may do next to nothing, so it writes one byte into a pipe whose other end the
// event loop watches. The descriptor of that pipe is the only thing the handler reads.

#include "SignalWatcher.h"

#include "controls/EventEntry.h"

#include <QGuiApplication>

#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace velmo::qt {

namespace {

constexpr std::array WatchedSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler reaches nothing else.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<int> wakeDescriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free);

} // namespace

extern "C" {
static void WakeUp(int /*signal*/)
{
    const int savedErrno = errno;
    const char byte = 1;
    // A full pipe is no loss: the loop is going to wake anyway.
    [[maybe_unused]] const ssize_t written = write(wakeDescriptor.load(), &byte, 1);
    errno = savedErrno;
}
}

struct SignalWatcher::SavedActions
{
    std::array<struct sigaction, WatchedSignals.size()> actions{};
};

SignalWatcher::SignalWatcher(std::function<void()> handler)
    : m_handler(std::move(handler))
{
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &m_context, [this] {
        controls::RunEvent(m_handler);
    });
    if (pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(
        m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { Drain(); });
    wakeDescriptor = m_pipe[1];
    m_saved = std::make_unique<SavedActions>();
    struct sigaction action = {};
    action.sa_handler = WakeUp;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < WatchedSignals.size(); ++i)
        sigaction(WatchedSignals[i], &action, &m_saved->actions[i]);
}

SignalWatcher::~SignalWatcher()
{
    if (m_saved == nullptr)
        return;
    for (std::size_t i = 0; i < WatchedSignals.size(); ++i)
        sigaction(WatchedSignals[i], &m_saved->actions[i], nullptr);
    wakeDescriptor = -1;
    m_notifier.reset();
    close(m_pipe[0]);
    close(m_pipe[1]);
}

void SignalWatcher::Drain()
{
    std::array<char, 16> bytes{};
    ssize_t count = read(m_pipe[0], bytes.data(), bytes.size());
    while (count-- > 0)
        controls::RunEvent(m_handler);
}

} // namespace velmo::qt
