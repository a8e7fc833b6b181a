#include "StartCore.h"

#include "core/NumberText.h"
#include "core/PathRules.h"
#include "core/RunError.h"
#include "core/SettingsKeys.h"
#include "sound/ChannelFlags.h"

#include <array>
#include <cstdio>
#include <utility>

namespace velmo {

StartCore::StartCore(StartPorts ports,
                     modINI& settings,
                     modBass& bass,
                     Adding& adding,
                     std::function<void*()> createMainWindow)
    : m_ports(ports)
    , m_settings(settings)
    , m_bass(bass)
    , m_adding(adding)
    , m_createMainWindow(std::move(createMainWindow))
{}

bool StartCore::Run()
{
    constexpr std::array Steps = {
        &StartCore::EnterApplicationDirectory,
        &StartCore::FindSoundLibrary,
        &StartCore::CheckSoundLibraryVersion,
        &StartCore::OpenSoundDevice,
        &StartCore::LeaveToApplicationDirectory,
        &StartCore::OpenCommandLine,
    };
    // NOLINTNEXTLINE(readability-use-anyofallof): the steps act, and their order is the contract
    for (const Step step : Steps)
        if (!(this->*step)())
            return false;
    return true;
}

bool StartCore::EnterApplicationDirectory()
{
    m_ports.files.SetCurrentDirectory(m_ports.application.ApplicationDirectory());
    return true;
}

bool StartCore::FindSoundLibrary()
{
    if (FileExists(m_ports.application.ProgramDirectory() + BassFileName, m_ports.files))
        return true;
    return Fatal("BASS.DLL does not exist.", "BASS.DLL");
}

bool StartCore::CheckSoundLibraryVersion()
{
    BassLibrary opened =
        OpenBass(m_ports.libraries, m_ports.application.ProgramDirectory() + BassFileName, m_bass);
    m_library = std::move(opened.library);
    if (HiWord(opened.version) == WantedBassVersion)
        return true;
    return Fatal("BASS version 2.4 was not loaded.", "BASS.DLL");
}

bool StartCore::OpenSoundDevice()
{
    const DWORD flags = DeviceFlags(m_settings);
    const std::string frequency = m_settings.ReadSetting(sections::Sound, keys::Frequency, "44100");
    void* window = m_createMainWindow();
    constexpr int DefaultDevice = -1;
    const auto hertz = static_cast<DWORD>(RoundHalfEven(ParseNumber(frequency)));
    if (m_bass.BASS_Init(DefaultDevice, hertz, flags, window, nullptr) != 0)
        return true;
    return Fatal("Can't initialize digital sound system.", "Error");
}

bool StartCore::LeaveToApplicationDirectory()
{
    return EnterApplicationDirectory();
}

bool StartCore::OpenCommandLine()
{
    // Lost on failure: a file that vanishes just now. The player starts without it.
    try {
        m_adding.AddPath(PathOfCommandLine(m_ports.application.CommandLine(), m_ports.files));
    } catch (const RunError& error) {
        static_cast<void>(std::fprintf(stderr, "velmo: %s\n", error.what()));
    }
    return true;
}

bool StartCore::Fatal(const std::string& text, const std::string& title)
{
    m_ports.dialogs.MessageBox(
        text + "\nApplication will terminate.", title, ports::MessageStyle::Critical);
    return false;
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
