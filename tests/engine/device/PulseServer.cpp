#include "PulseServer.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::test {

namespace {

// Without norewinds the sink takes its first block only after almost two seconds.
constexpr char SinkArguments[] = "module-null-sink sink_name=velmo norewinds=1";
constexpr std::chrono::seconds StartLimit{30};

bool Connects(const std::string& path)
{
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
    const bool connected =
        connect(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(file);
    return connected;
}

/// Waits `time` for the process to end, and says whether it has.
bool EndsWithin(pid_t process, std::chrono::milliseconds time)
{
    const int file = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    pollfd ended{.fd = file, .events = POLLIN, .revents = 0};
    const bool has = poll(&ended, 1, static_cast<int>(time.count())) > 0;
    close(file);
    return has;
}

[[noreturn]] void ExecServer(const std::string& directory, const std::string& socket)
{
    setenv("HOME", directory.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", directory.c_str(), 1);
    unsetenv("PULSE_SERVER");
    const int log = open((directory + "/log").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    const std::string protocol = "module-native-protocol-unix auth-anonymous=1 socket=" + socket;
    execlp("pulseaudio",
           "pulseaudio",
           "-n",
           "--daemonize=no",
           "--use-pid-file=no",
           "--exit-idle-time=-1",
           "-L",
           static_cast<const char*>(SinkArguments),
           "-L",
           protocol.c_str(),
           nullptr);
    _exit(127);
}

} // namespace

PulseServer::PulseServer()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velmo-pulse-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no private directory for the sound server");
    m_directory = pattern;
    m_address = "unix:" + pattern + "/native";
    if (const char* const before = std::getenv("PULSE_SERVER"))
        m_serverBefore = before;
    setenv("PULSE_SERVER", m_address.c_str(), 1);
}

PulseServer::~PulseServer()
{
    Kill();
    if (m_serverBefore.empty())
        unsetenv("PULSE_SERVER");
    else
        setenv("PULSE_SERVER", m_serverBefore.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(m_directory, ignored);
}

void PulseServer::Start()
{
    const std::string directory = m_directory.string();
    const std::string socket = directory + "/native";
    m_process = fork();
    if (m_process < 0)
        throw std::runtime_error("no process for the sound server");
    if (m_process == 0)
        ExecServer(directory, socket);
    AwaitAnswer();
}

void PulseServer::AwaitAnswer()
{
    const auto limit = std::chrono::steady_clock::now() + StartLimit;
    while (!Connects((m_directory / "native").string())) {
        if (EndsWithin(m_process, std::chrono::milliseconds(10)))
            throw std::runtime_error("pulseaudio ended at its start; is it installed?");
        if (std::chrono::steady_clock::now() > limit)
            throw std::runtime_error("pulseaudio takes no connection");
    }
}

void PulseServer::Kill() noexcept
{
    if (m_process <= 0)
        return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
}

void PulseServer::Hang() const noexcept
{
    kill(m_process, SIGSTOP);
    waitpid(m_process, nullptr, WUNTRACED);
}

void PulseServer::Continue() const noexcept
{
    kill(m_process, SIGCONT);
}

void PulseServer::RemoveSink()
{
    Control("unload-module module-null-sink");
}

void PulseServer::AddSink()
{
    Control(std::string("load-module ") + static_cast<const char*>(SinkArguments));
}

std::string PulseServer::Control(const std::string& arguments)
{
    const std::string command = "pactl --server=" + m_address + " " + arguments;
    const auto closePipe = [](FILE* pipe) { pclose(pipe); };
    // NOLINTNEXTLINE(cert-env33-c): a test's fixed command
    const std::unique_ptr<FILE, decltype(closePipe)> pipe(popen(command.c_str(), "r"), closePipe);
    if (!pipe)
        throw std::runtime_error("pactl can't be started");
    std::string text;
    std::array<char, 256> line{};
    while (fgets(line.data(), static_cast<int>(line.size()), pipe.get()) != nullptr)
        text += line.data();
    return text;
}

} // namespace velmo::test
