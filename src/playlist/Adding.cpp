#include "Adding.h"

#include "ListFile.h"

#include "core/PathRules.h"
#include "core/RunError.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <cstdio>

namespace velmo {

namespace {

/// A drive as it is written without a folder, such as "D:" or "D:\".
bool IsDrive(const std::string& path)
{
    constexpr std::size_t LongestDrive = 3;
    const std::size_t length = CountCharacters(path);
    return length > 1 && length <= LongestDrive && path[CharacterAt(path, 0).length] == ':';
}

} // namespace

Adding::Adding(AddingModules modules,
               forms::Playlist& playlist,
               modINI& settings,
               ports::Files& files)
    : m_modules(modules)
    , m_playlist(playlist)
    , m_settings(settings)
    , m_files(files)
{}

void Adding::AddPath(const std::string& path)
{
    if (path.empty()) {
        LoadAtStart();
        return;
    }
    if (!AddNamed(path))
        return;
    if (m_playlist.pl.Count() > 0)
        m_playlist.pl.Mark(1);
    m_modules.list.SaveInternalList();
    m_modules.list.UpdateListScrollBar();
}

void Adding::EnqueueFromCommandLine(const std::string& path)
{
    if (path.empty())
        return;
    const bool replaces =
        IsFalse(m_settings.ReadSetting(sections::Files, keys::EnqueueAsDefaultAction, "True"));
    if (replaces)
        m_playlist.pl.Clear();
    AddPath(path);
    m_modules.ordering.SortIfWanted(m_settings);
    if (m_playlist.pl.Count() > 0 && replaces) {
        m_modules.list.DeselectAllEntries();
        m_playlist.pl.Mark(1);
    }
    m_modules.list.SaveInternalList();
}

void Adding::pl_Drop(const std::vector<std::string>& paths)
{
    const std::size_t countBefore = m_playlist.pl.Count();
    for (const std::string& path : paths) {
        if (path.empty())
            continue;
        try {
            AddPath(path);
        } catch (const RunError& error) {
            static_cast<void>(std::fprintf(stderr, "velmo: %s\n", error.what()));
        }
    }
    m_modules.ordering.FinishAdding(countBefore, m_settings);
}

/// False if the path was a list with a foreign header.
bool Adding::AddNamed(const std::string& path)
{
    constexpr std::size_t ListNameEnd = 3;
    if (const auto format = FormatOfExtension(LastCharacters(path, ListNameEnd)))
        return ReadListFile(*format, path, m_files, ReadEntryStyle(m_settings), m_playlist.pl);
    if (m_files.IsDirectory(path) || IsDrive(path))
        AddFolder(path);
    else if (FileExists(path, m_files))
        AddFile(path);
    else
        throw RunError(RunError::FileNotFound, "File not found: " + path);
    return true;
}

void Adding::AddFolder(const std::string& path)
{
    const AddingOptions options = ReadAddingOptions(m_settings);
    const std::size_t countBefore = m_playlist.pl.Count();
    // Kept: what the last caller left counts, even if plugins have come or gone since.
    if (m_modules.filter.KnownExtensions.empty())
        m_modules.filter.BuildExtensionFilter();
    const bool recursive =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::RecureLocation, "True"));
    for (std::string& file : m_files.Walk(EnsureTrailingBackslash(path), recursive)) {
        if (!HasKnownExtension(file, m_modules.filter.KnownExtensions))
            continue;
        if (options.readsOnLoad)
            m_modules.entries.NormaliseFound(file);
        m_modules.entries.AddFound(std::move(file), options);
    }
    if (m_modules.list.ReadsTitlesOnDisplay())
        m_modules.list.StartTitleReader(countBefore);
}

void Adding::AddFile(const std::string& path)
{
    const AddingOptions options = ReadAddingOptions(m_settings);
    m_modules.filter.BuildExtensionFilter();
    if (!HasKnownExtension(path, m_modules.filter.KnownExtensions))
        return;
    m_modules.entries.AddNamed(path, options);
    if (m_modules.list.ReadsTitlesOnDisplay())
        m_modules.list.StartTitleReader(m_playlist.pl.Count() - 1);
}

void Adding::LoadAtStart()
{
    m_modules.list.LoadInternalList();
    if (m_playlist.pl.Count() > 0)
        m_playlist.pl.Mark(1);
    m_modules.list.SaveInternalList();
}

} // namespace velmo
