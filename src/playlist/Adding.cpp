#include "Adding.h"

#include "EntryText.h"

#include "core/PathRules.h"
#include "core/RunError.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>

namespace velmo {

namespace {

/// The extensions that the engine's own decoders open.
std::vector<std::string> BuiltInExtensions()
{
    return {"wav",
            "aif",
            "mp3",
            "mp2",
            "mp1",
            "ogg",
            "mo3",
            "xm",
            "mod",
            "s3m",
            "it",
            "mtm",
            "umx",
            "flac"};
}

} // namespace

Adding::Adding(forms::Playlist& playlist, modTags& tags, modINI& settings, ports::Files& files)
    : m_playlist(playlist)
    , m_tags(tags)
    , m_settings(settings)
    , m_files(files)
{}

void Adding::AddPath(const std::string& path)
{
    if (path.empty())
        return;
    if (m_files.IsDirectory(path))
        AddFolder(path);
    else if (!FileExists(path, m_files))
        throw RunError(RunError::FileNotFound, "File not found: " + path);
    else if (HasKnownExtension(path, BuiltInExtensions()))
        AddFile(path);
    if (m_playlist.pl.Count() > 0)
        m_playlist.pl.Mark(1);
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
    if (m_playlist.pl.Count() > 0 && replaces) {
        m_playlist.pl.DeselectAll();
        m_playlist.pl.Mark(1);
    }
}

void Adding::AddFolder(const std::string& path)
{
    const bool recursive =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::RecureLocation, "True"));
    for (const std::string& file : m_files.Walk(EnsureTrailingBackslash(path), recursive))
        if (HasKnownExtension(file, BuiltInExtensions()))
            AddFile(file);
}

void Adding::AddFile(std::string path)
{
    const std::string title = EntryTitle(path);
    m_playlist.pl.Add({.Text = title, .Length = {}, .Path = path});
    if (EqualsIgnoringCase(m_settings.ReadSetting(sections::Options, keys::ReadTitlesOn, "display"),
                           "display"))
        m_playlist.tmrInfo.Enabled = true;
}

std::string Adding::EntryTitle(std::string& path)
{
    std::string title = m_tags.FileNameTitle(path);
    if (IsTrue(m_settings.ReadSetting(sections::Display, keys::ShowNumbersInPL, "True")))
        title = std::to_string(m_playlist.pl.Count() + 1) + ". " + title;
    return ConvertedTitle(std::move(title), m_settings);
}

bool HasKnownExtension(const std::string& name, const std::vector<std::string>& extensions)
{
    const std::size_t dot = name.rfind('.');
    const std::string extension = dot == std::string::npos ? name : name.substr(dot + 1);
    return extensions.empty()
           || std::any_of(extensions.begin(), extensions.end(), [&](const std::string& known) {
                  return EqualsIgnoringCase(known, extension);
              });
}

} // namespace velmo
