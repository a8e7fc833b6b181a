#include "AddingDialogs.h"

#include "core/PathRules.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

AddingDialogs::AddingDialogs(AddingModules modules,
                             forms::Playlist& playlist,
                             TrackStarter& errors,
                             modINI& settings,
                             ports::Files& files,
                             ports::Dialogs& dialogs)
    : m_modules(modules)
    , m_playlist(playlist)
    , m_errors(errors)
    , m_settings(settings)
    , m_files(files)
    , m_dialogs(dialogs)
{}

void AddingDialogs::AddFilesDialog()
{
    const AddingOptions options = ReadAddingOptions(m_settings);
    m_modules.filter.BuildExtensionFilter();
    const ports::FileDialogAnswer answer = m_dialogs.ChooseFiles({
        .kind = ports::FileDialogKind::OpenMany,
        .owner = m_playlist.Name,
        .title = "Open Media",
        .filter = m_modules.filter.OpenMediaFilter(),
        .folder = m_settings.ReadSetting(sections::RTM, keys::TempDir1, "c:\\"),
        .fileName = {},
    });
    if (answer.paths.empty())
        return;
    m_dialogs.ServeEvents();
    const std::size_t countBefore = m_playlist.pl.Count();
    for (const std::string& path : answer.paths)
        m_modules.entries.AddNamed(path, options);
    m_modules.ordering.FinishAdding(countBefore, m_settings);
    m_settings.WriteSetting(
        sections::RTM, keys::TempDir1, FileDirectory(answer.paths.back(), m_files));
    m_modules.list.UpdateListScrollBar();
}

void AddingDialogs::AddDirectoryDialog()
{
    const AddingOptions options = ReadAddingOptions(m_settings);
    const std::string folder = m_dialogs.ChooseFolder("Select Dir");
    if (folder.empty())
        return;
    const std::size_t countBefore = m_playlist.pl.Count();
    m_modules.filter.BuildExtensionFilter();
    const bool recursive =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::RecureLocation, "True"));
    if (recursive)
        m_dialogs.ServeEvents();
    for (const std::string& path : m_files.Walk(EnsureTrailingBackslash(folder), recursive)) {
        if (path.empty()) {
            m_errors.ShowError(
                "Requested path not accessible.\r\nPlease check your device and try again.",
                m_playlist);
            return;
        }
        if (HasKnownExtension(path, m_modules.filter.KnownExtensions))
            m_modules.entries.AddFound(path, options);
    }
    m_modules.ordering.FinishAdding(countBefore, m_settings);
    m_modules.list.UpdateListScrollBar();
}

} // namespace velmo
