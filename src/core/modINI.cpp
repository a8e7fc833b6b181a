#include "modINI.h"

#include "PathRules.h"
#include "TextRules.h"

namespace velmo {

namespace {

constexpr const char* SettingsFileName = "zuvio.ini";

} // namespace

modINI::modINI(ports::SettingsFile& file,
               ports::Dialogs& dialogs,
               const std::string& applicationDirectory)
    : m_file(file)
    , m_dialogs(dialogs)
    , m_settingsPath(EnsureTrailingBackslash(applicationDirectory) + SettingsFileName)
{}

std::string modINI::ReadSetting(const std::string& section,
                                const std::string& key,
                                const std::string& fallback)
{
    ProfileRegister(section, m_settingsPath);
    return ProfileRead(key, fallback);
}

void modINI::WriteSetting(const std::string& section,
                          const std::string& key,
                          const std::string& value)
{
    ProfileRegister(section, m_settingsPath);
    m_file.ProfileWrite(m_iniSection, key, value, m_iniFile);
}

void modINI::ProfileRegister(const std::string& section, const std::string& file)
{
    m_iniSection = TrimBlanks(section);
    m_iniFile = TrimBlanks(file);
    m_iniRegistered = true;
}

std::string modINI::ProfileRead(const std::string& key, const std::string& fallback)
{
    if (!m_iniRegistered) {
        m_dialogs.MessageBox("[Section] and FileName Not Registered in Private.Ini!",
                             "IniFile Logic Error",
                             ports::MessageStyle::Critical);
        return fallback;
    }
    return m_file.ProfileRead(m_iniSection, key, fallback, m_iniFile);
}

} // namespace velmo
