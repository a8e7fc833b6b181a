#pragma once

#include "ports/Dialogs.h"
#include "ports/SettingsFile.h"

#include <string>

namespace velmo {

/// Access to the settings file and to other files of its kind. Every read goes to the file, so that
/// a change by anybody takes effect at the next use. User-interface thread.
class modINI final
{
public:
    /// `applicationDirectory` holds the settings file, with or without a separator at its end.
    modINI(ports::SettingsFile& file,
           ports::Dialogs& dialogs,
           const std::string& applicationDirectory);

    /// The value in the settings file, at most 254 characters; `fallback` if it is absent or empty.
    std::string ReadSetting(const std::string& section,
                            const std::string& key,
                            const std::string& fallback);

    /// Writes to the settings file. A failed write goes unnoticed.
    void WriteSetting(const std::string& section, const std::string& key, const std::string& value);

    /// Sets the section and the file that the next `ProfileRead` works on, both trimmed of blanks.
    void ProfileRegister(const std::string& section, const std::string& file);

    /// Reads from the registered section. If none was ever registered, a message box says so and
    /// the result is `fallback`.
    std::string ProfileRead(const std::string& key, const std::string& fallback);

private:
    ports::SettingsFile& m_file;
    ports::Dialogs& m_dialogs;
    std::string m_settingsPath;

    std::string m_iniSection;
    std::string m_iniFile;
    bool m_iniRegistered = false;
};

} // namespace velmo
