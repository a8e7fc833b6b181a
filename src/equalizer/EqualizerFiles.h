#pragma once

#include "modFXFunctions.h"

#include "core/modINI.h"
#include "forms/fX.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// The curve in files: the default one, and those that the user saves and loads. No failure is
/// reported: what can't be read leaves the tickers, what can't be written leaves the old file.
/// User-interface thread only.
class EqualizerFiles final
{
public:
    /// `applicationDirectory` holds the default file; it ends with its separator.
    EqualizerFiles(forms::fX& window,
                   modFXFunctions& equalizer,
                   modINI& settings,
                   ports::Files& files,
                   ports::Dialogs& dialogs,
                   std::string applicationDirectory);

    /// Replaces the default file by the tickers as they stand.
    void SaveDefaultEqualizer();

    /// Sets the tickers from the default file, if there is one, and nothing else: steps and tool
    /// tips follow with the next `ApplyEqualizer`.
    void LoadDefaultEqualizer();

    /// Asks for a file and sets the tickers from it. With the equalizer on, one more effect goes
    /// onto `channel`, the current one.
    void LoadEqualizerFile(DWORD channel);

    /// Asks for a name and writes the tickers there.
    void SaveEqualizerFile();

private:
    ports::FileDialogAnswer Ask(ports::FileDialogKind kind,
                                const char* title,
                                const char* folderKey);
    void Write(const std::string& path);

    forms::fX& m_window;
    modFXFunctions& m_equalizer;
    modINI& m_settings;
    ports::Files& m_files;
    ports::Dialogs& m_dialogs;
    std::string m_applicationDirectory;
};

/// The default file's name.
constexpr const char* DefaultCurveFileName = "zuvio.zfx";

} // namespace velmo
