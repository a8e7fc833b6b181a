#include "mMain.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <chrono>

namespace velmo {

namespace {

constexpr const char* MutexName = "Velmo Player_APPLICATION_MUTEX";
constexpr std::chrono::milliseconds HandOverTimeout{5000};

void HandOver(ports::Instance& instance, const std::string& commandLine)
{
    const auto deadline = std::chrono::steady_clock::now() + HandOverTimeout;
    const auto running = instance.FindRunningInstance(deadline);
    if (!running)
        return;
    if (commandLine.empty() && instance.IsWindowVisible(*running, deadline)) {
        instance.ActivateWindow(*running, deadline);
        return;
    }
    const std::string bytes = commandLine.empty() ? std::string(1, '\0') : commandLine;
    instance.Send(*running, {.dwData = 0, .bytes = bytes}, deadline);
}

} // namespace

ProcessRole DecideRole(ports::Instance& instance, modINI& settings, const std::string& commandLine)
{
    const bool isFirst = instance.CreateInstanceMutex(MutexName);
    const bool allowsMany =
        IsTrue(settings.ReadSetting(sections::Options, keys::AllowMultipleInstances, "false"));
    if (allowsMany || isFirst)
        return ProcessRole::Player;
    HandOver(instance, commandLine);
    return ProcessRole::Forwarder;
}

} // namespace velmo
