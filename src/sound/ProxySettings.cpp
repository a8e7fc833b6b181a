#include "ProxySettings.h"

#include "core/CaseRules.h"
#include "core/SettingsKeys.h"

namespace velmo {

namespace {

/// "user:password@proxy:port". Each half is there only if both its parts are.
std::string ProxyText(modINI& settings)
{
    const auto read = [&](const char* key) {
        return settings.ReadSetting(sections::Setup, key, "");
    };
    const auto joined = [](const std::string& first, const std::string& second) {
        return first.empty() || second.empty() ? std::string() : first + ":" + second;
    };
    const std::string server = joined(read(keys::Proxy), read(keys::Port));
    const std::string account = joined(read(keys::Username), read(keys::Password));
    return account.empty() ? server : account + "@" + server;
}

} // namespace

ProxySettings::ProxySettings(const modBass& bass, modINI& settings)
    : m_bass(bass)
    , m_settings(settings)
{}

void ProxySettings::ApplyProxySettings()
{
    if (!IsFalse(m_settings.ReadSetting(sections::Setup, keys::UseDefaultNetSettings, "true")))
        return;
    m_text = ProxyText(m_settings);
    m_bass.BASS_SetConfigPtr(BASS_CONFIG_NET_PROXY, m_text.c_str());
}

} // namespace velmo
