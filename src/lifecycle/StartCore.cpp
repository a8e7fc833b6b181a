#include "StartCore.h"

#include "bass/Plugins.h"
#include "core/NumberText.h"
#include "core/PathRules.h"
#include "core/RunError.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "integration/CheckAssociations.h"
#include "sound/ChannelFlags.h"
#include "sound/LibraryOptions.h"
#include "sound/Reverb.h"

#include <array>
#include <cstdio>
#include <utility>

namespace velmo {

StartCore::StartCore(StartPorts ports, StartModules modules, StartCalls calls)
    : m_ports(ports)
    , m_modules(modules)
    , m_calls(std::move(calls))
{}

bool StartCore::Run(StartKind kind)
{
    constexpr std::array Steps = {
        &StartCore::EnterApplicationDirectory,
        &StartCore::FindSoundLibrary,
        &StartCore::CheckSoundLibraryVersion,
        &StartCore::OpenSoundDevice,
        &StartCore::FindEqualizer,
        &StartCore::CheckEqualizerVersion,
        &StartCore::FillPluginTable,
        &StartCore::BuildPalette,
        &StartCore::SetLibraryOptions,
        &StartCore::SetReverb,
        &StartCore::ResetTitle,
        &StartCore::ShowTrayIcon,
        &StartCore::MarkAlwaysOnTop,
        &StartCore::RenewAssociations,
        &StartCore::TakeShutdownStatus,
        &StartCore::SetProxy,
        &StartCore::LeaveToApplicationDirectory,
    };
    m_kind = kind;
    m_failed = false;
    m_isReady = false;
    m_isListOpen = false;
    // NOLINTNEXTLINE(readability-use-anyofallof): the steps act, and their order is the contract
    for (const Step step : Steps) {
        (this->*step)();
        // A box of the step serves events, and one of them may have ended the program.
        if (m_failed || m_ports.application.IsQuitting())
            return false;
    }
    m_isReady = true;
    return true;
}

void StartCore::OpenList()
{
    if (std::exchange(m_isReady, false))
        OpenCommandLine();
}

void StartCore::EnterApplicationDirectory()
{
    m_ports.files.SetCurrentDirectory(m_ports.application.ApplicationDirectory());
}

void StartCore::FindSoundLibrary()
{
    if (!FileExists(m_ports.application.ProgramDirectory() + BassFileName, m_ports.files))
        Fatal("BASS.DLL does not exist.", "BASS.DLL");
}

void StartCore::CheckSoundLibraryVersion()
{
    BassLibrary opened = OpenBass(
        m_ports.libraries, m_ports.application.ProgramDirectory() + BassFileName, m_modules.bass);
    m_library = std::move(opened.library);
    if (HiWord(opened.version) != WantedBassVersion)
        Fatal("BASS version 2.4 was not loaded.", "BASS.DLL");
}

void StartCore::OpenSoundDevice()
{
    const DWORD flags = DeviceFlags(m_modules.settings);
    const std::string frequency =
        m_modules.settings.ReadSetting(sections::Sound, keys::Frequency, "44100");
    void* window = m_calls.createMainWindow();
    constexpr int DefaultDevice = -1;
    const auto hertz = static_cast<DWORD>(RoundHalfEven(ParseNumber(frequency)));
    if (m_modules.bass.BASS_Init(DefaultDevice, hertz, flags, window, nullptr) == 0)
        Fatal("Can't initialize digital sound system.", "Error");
}

void StartCore::FindEqualizer()
{
    if (!FileExists(m_ports.application.ProgramDirectory() + BassFxFileName, m_ports.files))
        EqualizerFailed("BASS_FX.DLL does not exists!");
}

void StartCore::CheckEqualizerVersion()
{
    BassLibrary opened =
        OpenBassFx(m_ports.libraries, m_ports.application.ProgramDirectory() + BassFxFileName);
    m_effects = std::move(opened.library);
    if (HiWord(opened.version) != WantedBassVersion)
        EqualizerFailed("An incorrect version of BASS_FX.DLL was loaded (2.4 is required)");
}

void StartCore::FillPluginTable()
{
    const std::vector<std::string> folders = PluginFolders(
        m_ports.application.ProgramDirectory(), m_ports.application.ApplicationDirectory());
    if (!m_ports.files.SetCurrentDirectory(folders.front()))
        static_cast<void>(
            std::fprintf(stderr, "velmo: plugins missing: %s\n", folders.front().c_str()));
    LoadPlugins(
        FindPlugins(m_ports.files, folders), m_modules.bass, m_modules.settings, m_modules.plugins);
}

// NOLINTNEXTLINE(readability-make-member-function-const): the steps have one type
void StartCore::BuildPalette()
{
    m_calls.buildPalette();
}

void StartCore::SetLibraryOptions()
{
    ApplyLibraryOptions(m_modules.bass, m_modules.settings);
}

void StartCore::SetReverb()
{
    ApplyReverb(m_modules.bass, m_modules.settings);
}

void StartCore::ResetTitle()
{
    m_modules.transport.CurrentTitleText = IdleTitle;
    m_modules.systray.TrayIconShown = false;
}

void StartCore::ShowTrayIcon()
{
    if (m_modules.settings.ReadSetting(sections::Display, keys::ShowIn, "Taskbar")
        == "Taskbar and System Tray")
        m_modules.systray.AddTrayIcon();
}

void StartCore::MarkAlwaysOnTop()
{
    m_modules.resources.submnuAlwaysOnTop.Checked =
        IsTrue(m_modules.settings.ReadSetting(sections::Options, keys::AlwaysOnTop, "false"));
}

void StartCore::RenewAssociations()
{
    CheckAssociations(m_modules.settings, m_ports.associations);
}

void StartCore::TakeShutdownStatus()
{
    m_modules.shutdown.ShutdownStatus = ReadShutdownStatus(m_modules.settings);
}

void StartCore::SetProxy()
{
    m_modules.proxy.ApplyProxySettings();
}

void StartCore::LeaveToApplicationDirectory()
{
    EnterApplicationDirectory();
}

void StartCore::OpenCommandLine()
{
    // A restart with the command line would throw away the list that has been built since.
    const std::string path =
        m_kind == StartKind::Restart
            ? std::string()
            : PathOfCommandLine(m_ports.application.CommandLine(), m_ports.files);
    // Lost on failure: a file that vanishes just now. The player starts without it.
    try {
        m_modules.adding.AddPath(path);
    } catch (const RunError& error) {
        static_cast<void>(std::fprintf(stderr, "velmo: %s\n", error.what()));
    }
    m_isListOpen = true;
}

void StartCore::Fatal(const std::string& text, const std::string& title)
{
    m_ports.dialogs.MessageBox(
        text + "\nApplication will terminate.", title, ports::MessageStyle::Critical);
    m_failed = true;
}

void StartCore::EqualizerFailed(const std::string& text)
{
    m_ports.dialogs.MessageBox(
        text + "\nEqualizer will be disabled.", "BASS_FX.DLL", ports::MessageStyle::Critical);
    m_calls.disableEqualizer();
}

std::string PathOfCommandLine(const std::string& commandLine, ports::Files& files)
{
    if (commandLine.empty() || files.IsDirectory(commandLine))
        return commandLine;
    const std::string path =
        EnsureTrailingBackslash(SplitPath(commandLine).directory) + files.DirSearch(commandLine);
    return FileExists(path, files) ? path : std::string();
}

} // namespace velmo
