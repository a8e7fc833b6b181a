#include "ShutdownStatus.h"

#include "core/SettingsKeys.h"

namespace velmo {

std::string ReadShutdownStatus(modINI& settings)
{
    const std::string status =
        settings.ReadSetting(sections::ShutDownSystem, keys::Status, "Disabled");
    return status == "Enabled" ? "Enabled" : "Disabled";
}

} // namespace velmo
