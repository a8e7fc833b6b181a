#include "LinuxMixerProgram.h"

#include "core/TextRules.h"

#include <array>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace velmo {

namespace {

/// Program and, behind a blank, its argument; the first that is there is taken.
constexpr std::array Known = {"pavucontrol",
                              "pavucontrol-qt",
                              "kmix",
                              "gnome-control-center sound",
                              "xfce4-mixer",
                              "mate-volume-control",
                              "alsamixergui"};

/// A child's child, so that nobody has to wait for it. Between the forks and the exec nothing may
/// be called that takes a lock: other threads may have held it.
void RunDetached(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        // The call takes texts that it doesn't change as if it did.
        arguments.push_back(const_cast<char*>(argument.c_str())); // NOLINT(*-const-cast)
    arguments.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        if (::fork() == 0)
            ::execv(arguments.front(), arguments.data());
        ::_exit(0);
    }
    if (child > 0)
        ::waitpid(child, nullptr, 0);
}

} // namespace

void LinuxMixerProgram::Start()
{
    // Nothing changes the environment while the program runs but the hand-over's token.
    const char* const searchPath = std::getenv("PATH"); // NOLINT(concurrency-mt-unsafe)
    const std::vector<std::string> command =
        FindMixerProgram(searchPath == nullptr ? std::string() : std::string(searchPath));
    if (!command.empty())
        RunDetached(command);
}

std::vector<std::string> FindMixerProgram(const std::string& searchPath)
{
    for (const char* known : Known) {
        std::vector<std::string> command;
        for (const auto word : Split(known, ' '))
            command.emplace_back(word);
        for (const auto directory : Split(searchPath, ':')) {
            const std::string path = std::string(directory) + "/" + command.front();
            if (directory.starts_with('/') && ::access(path.c_str(), X_OK) == 0) {
                command.front() = path;
                return command;
            }
        }
    }
    return {};
}

} // namespace velmo
