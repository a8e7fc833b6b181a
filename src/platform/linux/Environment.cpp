#include "Environment.h"

#include <pwd.h>

#include <cstdlib>
#include <filesystem>

#include <system_error>
#include <unistd.h>

namespace velmo {

namespace {

std::string Variable(const char* name)
{
    // Read at process entry, when there is one thread and nothing changes the environment.
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? std::string() : std::string(value);
}

std::string HomeOfUser()
{
    const passwd* const user = ::getpwuid(::geteuid()); // NOLINT(concurrency-mt-unsafe)
    return user == nullptr || user->pw_dir == nullptr ? std::string("/")
                                                      : std::string(user->pw_dir);
}

/// The variable with the path behind `prefix` made absolute. One that does not begin so, or is
/// absolute, stays.
void MakeAbsolute(const char* name, std::string_view prefix)
{
    const std::string value = Variable(name);
    if (value.size() <= prefix.size() || !value.starts_with(prefix) || value[prefix.size()] == '/')
        return;
    std::error_code failed;
    const std::string path = value.substr(prefix.size());
    const std::string absolute =
        std::string(prefix) + std::filesystem::absolute(path, failed).string();
    if (!failed)
        ::setenv(name, absolute.c_str(), 1); // NOLINT(concurrency-mt-unsafe): as above
}

} // namespace

void MakePathVariablesAbsolute()
{
    MakeAbsolute("VELMO_HOME", "");
    MakeAbsolute("VELMO_AUDIO", "wav:");
    MakeAbsolute("VELMO_AUDIO", "wav-fast:");
}

Environment ReadEnvironment()
{
    std::error_code failed;
    Environment environment;
    environment.velmoDrives = Variable("VELMO_DRIVES");
    environment.xdgDataHome = Variable("XDG_DATA_HOME");
    environment.xdgRuntimeDir = Variable("XDG_RUNTIME_DIR");
    environment.home = Variable("HOME");
    if (environment.home.empty())
        environment.home = HomeOfUser();
    environment.activationToken = Variable("XDG_ACTIVATION_TOKEN");
    if (environment.activationToken.empty())
        environment.activationToken = Variable("DESKTOP_STARTUP_ID");
    environment.executable = std::filesystem::read_symlink("/proc/self/exe", failed).string();
    environment.currentDirectory = std::filesystem::current_path(failed).string();
    environment.velmoHome = Variable("VELMO_HOME");
    if (!environment.velmoHome.empty() && !environment.velmoHome.starts_with('/'))
        environment.velmoHome.insert(0, environment.currentDirectory + "/");
    environment.userId = ::geteuid();
    return environment;
}

} // namespace velmo
