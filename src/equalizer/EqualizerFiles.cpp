#include "EqualizerFiles.h"

#include "EqualizerCurve.h"

#include "core/PathRules.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

namespace {

constexpr const char* Extension = ".zfx";

/// The shortest file that a whole curve can give has one byte more.
constexpr std::size_t TooShort = 84;

} // namespace

EqualizerFiles::EqualizerFiles(forms::fX& window,
                               modFXFunctions& equalizer,
                               modINI& settings,
                               ports::Files& files,
                               ports::Dialogs& dialogs,
                               std::string applicationDirectory)
    : m_window(window)
    , m_equalizer(equalizer)
    , m_settings(settings)
    , m_files(files)
    , m_dialogs(dialogs)
    , m_applicationDirectory(std::move(applicationDirectory))
{}

void EqualizerFiles::SaveDefaultEqualizer()
{
    Write(m_applicationDirectory + DefaultCurveFileName);
}

void EqualizerFiles::LoadDefaultEqualizer()
{
    const std::string path = m_applicationDirectory + DefaultCurveFileName;
    if (FileExists(path, m_files))
        ReadCurve(m_files.Read(path).value_or(std::string()), m_window);
}

void EqualizerFiles::LoadEqualizerFile(DWORD channel)
{
    const ports::FileDialogAnswer answer =
        Ask(ports::FileDialogKind::Open, "Load EQ Settings", keys::TempDir6);
    if (answer.paths.empty())
        return;
    const std::string& path = answer.paths.front();
    const std::string bytes = m_files.Read(path).value_or(std::string());
    if (bytes.size() > TooShort)
        ReadCurve(bytes, m_window);
    // Kept: the effect that the channel has is not taken off, so the gains add up.
    m_equalizer.ApplyIfOn(channel);
    m_settings.WriteSetting(sections::RTM, keys::TempDir6, SplitPath(path).directory);
}

void EqualizerFiles::SaveEqualizerFile()
{
    const ports::FileDialogAnswer answer =
        Ask(ports::FileDialogKind::Save, "Save EQ Settings", keys::TempDir5);
    if (answer.paths.empty())
        return;
    const std::string& path = answer.paths.front();
    const bool hasExtension = EqualsIgnoringCase(LastCharacters(path, 4), Extension);
    Write(hasExtension ? path : path + Extension);
    m_settings.WriteSetting(sections::RTM, keys::TempDir5, SplitPath(path).directory);
}

ports::FileDialogAnswer EqualizerFiles::Ask(ports::FileDialogKind kind,
                                            const char* title,
                                            const char* folderKey)
{
    return m_dialogs.ChooseFiles(
        {.kind = kind,
         .owner = m_window.Name,
         .title = title,
         .filter = "EQ Settings (*.zfx)|*.zfx",
         .filterIndex = 1,
         .folder = m_settings.ReadSetting(sections::RTM, folderKey, m_applicationDirectory),
         .fileName = ""});
}

void EqualizerFiles::Write(const std::string& path)
{
    // Lost on failure: this curve. The file stays as it was.
    static_cast<void>(m_files.ReplaceFile(path, CurveText(m_window)));
}

} // namespace velmo
