#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"

#include <string>

namespace velmo {

/// The proxy that the library is told of. User-interface thread only.
class ProxySettings
{
public:
    /// The table may still be empty here; it must be filled when the settings are applied.
    ProxySettings(const modBass& bass, modINI& settings);

    /// Tells the library the proxy of section "Setup", read now; nothing if "UseDefaultNetSettings"
    /// is anything but "false".
    void ApplyProxySettings();

private:
    const modBass& m_bass;
    modINI& m_settings;
    std::string m_text; ///< what the library was given, for as long as it may look at it
};

} // namespace velmo
