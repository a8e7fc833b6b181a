#include "PulseServer.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

// What the sanitizers shall leave out: the server's client library, which isn't built with them.
// Its locks are invisible to the thread sanitizer, and one small record of it is lost whenever a
// connection ends while the server has lost its last sink.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming):
// the sanitizers look for these names
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options()
{
    return "ignore_noninstrumented_modules=1";
}

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libpulse.so";
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

namespace velmo::test {

namespace {

// Without norewinds the sink takes its first block only after almost two seconds.
constexpr char SinkArguments[] = "module-null-sink sink_name=velmo norewinds=1";
constexpr std::chrono::seconds StartLimit{60};

/// What a shell's command gives.
int Run(const std::string& command)
{
    return std::system(command.c_str()); // NOLINT(cert-env33-c,concurrency-mt-unsafe): fixed ones
}

} // namespace

PulseServer::PulseServer()
{
    setenv("PULSE_SERVER", ("unix:" + m_directory("native")).c_str(), 1);
}

void PulseServer::Start()
{
    const std::string line =
        "cd '" + m_directory()
        + "' && unset PULSE_SERVER && HOME=$PWD XDG_RUNTIME_DIR=$PWD exec pulseaudio -n"
          " --daemonize=no --use-pid-file=no --exit-idle-time=-1 -L '"
        + static_cast<const char*>(SinkArguments)
        + "' -L \"module-native-protocol-unix auth-anonymous=1 socket=$PWD/native\" >>log 2>&1";
    m_process = fork();
    if (m_process == 0) {
        execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        _exit(127);
    }
    const auto limit = std::chrono::steady_clock::now() + StartLimit;
    while (Run("pactl info >/dev/null 2>&1") != 0) {
        if (m_process < 0 || waitpid(m_process, nullptr, WNOHANG) != 0) {
            m_process = -1;
            throw std::runtime_error("pulseaudio ended at its start; is it installed?");
        }
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
    if (Run("pactl " + arguments + " >'" + m_directory("answer") + "'") == -1)
        throw std::runtime_error("pactl can't be started");
    return m_directory.Read("answer");
}

} // namespace velmo::test
