#include "ListDialogs.h"

#include "ListFile.h"
#include "ListText.h"

#include "core/PathRules.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

namespace {

constexpr const char* SaveListFilter = "Velmo Player List Format (*.zvl)|*.zvl|"
                                       "M3U List Format (*.m3u)|*.m3u|"
                                       "PLS List Format (*.pls)|*.pls";
constexpr const char* UntitledLine = "#ZVL20#Untitled playlist";
constexpr std::size_t ExtensionLength = 4;

std::optional<ListFormat> FormatOfLabel(const std::string& label)
{
    if (label == "M3U List Format (*.m3u)")
        return ListFormat::M3u;
    if (label == "Velmo Player List Format (*.zvl)")
        return ListFormat::Own;
    if (label == "PLS List Format (*.pls)")
        return ListFormat::Pls;
    return std::nullopt;
}

/// By the last four characters, the full stop included.
std::optional<ListFormat> FormatOfName(const std::string& name)
{
    const std::string end = LastCharacters(name, ExtensionLength);
    return end.starts_with('.') ? FormatOfExtension(end.substr(1)) : std::nullopt;
}

} // namespace

const char* const OpenListFilter = "All Known Formats (*.m3u,*.pls,*.zvl)|*.m3u;*.pls;*.zvl|"
                                   "M3U List Format (*.m3u)|*.m3u|"
                                   "Velmo Player List Format (*.zvl)|*.zvl|"
                                   "PLS List Format (*.pls)|*.pls|"
                                   "All Files (*.*)|*.*";

ListDialogs::ListDialogs(modPlaylist& list,
                         ListForms forms,
                         Ordering& ordering,
                         ListStore& store,
                         modINI& settings,
                         ports::Files& files,
                         ports::Dialogs& dialogs)
    : m_list(list)
    , m_forms(forms)
    , m_ordering(ordering)
    , m_store(store)
    , m_settings(settings)
    , m_files(files)
    , m_dialogs(dialogs)
{}

void ListDialogs::OpenListDialog()
{
    const EntryStyle style = ReadEntryStyle(m_settings);
    const ports::FileDialogAnswer answer = m_dialogs.ChooseFiles({
        .kind = ports::FileDialogKind::Open,
        .owner = m_forms.playlist.Name,
        .title = "Open Playlist",
        .filter = OpenListFilter,
        .folder = m_settings.ReadSetting(sections::RTM, keys::TempDir2, m_store.Directory()),
        .fileName = {},
    });
    if (answer.paths.empty())
        return;
    const std::string& path = answer.paths.front();
    // Kept: a file of another kind is not read, but all that follows is done.
    const std::optional<ListFormat> format = FormatOfName(path);
    if (format && !ReadListFile(*format, path, m_files, style, m_forms.playlist.pl))
        return;
    m_settings.WriteSetting(sections::RTM, keys::TempDir2, FileDirectory(path, m_files));
    m_ordering.SortIfWanted(m_settings);
    m_list.SaveInternalList();
    KeepCopy();
    m_list.UpdateListScrollBar();
}

void ListDialogs::SaveListDialog()
{
    const ports::FileDialogAnswer answer = m_dialogs.ChooseFiles({
        .kind = ports::FileDialogKind::Save,
        .owner = m_forms.playlist.Name,
        .title = "Save Playlist",
        .filter = SaveListFilter,
        .folder = m_settings.ReadSetting(sections::RTM, keys::TempDir1, m_store.Directory()),
        .fileName = {},
    });
    const std::optional<ListFormat> format = FormatOfLabel(answer.label);
    if (answer.paths.empty() || !format)
        return;
    std::string path = answer.paths.front();
    if (FormatOfName(path) != format)
        path += ExtensionOf(*format);
    const std::string titleLine =
        format == ListFormat::Own ? TitleLineOf(path) : std::string(UntitledLine);
    ListText text(*format, m_forms.playlist.pl, titleLine);
    // Lost on failure: the file, without a word.
    [[maybe_unused]] const auto result =
        m_files.ReplaceFileInPieces(path, [&text] { return text.Next(); });
    m_settings.WriteSetting(sections::RTM, keys::TempDir1, FileDirectory(path, m_files));
}

/// The first line that a list saved at that path gets: a list that is there keeps its own.
std::string ListDialogs::TitleLineOf(const std::string& path)
{
    const std::string line =
        FileExists(path, m_files) ? FirstLineOfFile(path, m_files) : std::string();
    return line.starts_with(OwnListMagic) ? line : std::string(UntitledLine);
}

/// Puts the playlist as it stands into the store. Kept: its row appears even if that fails.
void ListDialogs::KeepCopy()
{
    const ListStore::FreeName free = m_store.FindFreeName();
    [[maybe_unused]] const auto result = m_store.Copy(m_list.InternalListPath(), free.path);
    const std::string title = "New playlist " + std::to_string(free.number);
    m_forms.manager.lstLists.AddTexts({.Text = title, .Length = {}, .Path = free.path});
}

} // namespace velmo
