#include "Plugins.h"

#include "core/CaseRules.h"
#include "core/PathRules.h"
#include "core/SettingsKeys.h"

#include <algorithm>
#include <optional>

namespace velmo {

namespace {

constexpr const char* FolderName = "plugins/";
constexpr const char* FileMask = "bass*.so";

bool HasName(const std::vector<PluginFile>& plugins, const std::string& name)
{
    return std::any_of(plugins.begin(), plugins.end(), [&](const PluginFile& plugin) {
        return plugin.name == name;
    });
}

PluginEntry UnloadedEntry(const PluginFile& plugin)
{
    PluginEntry entry;
    entry.FileName = plugin.name;
    entry.HandleText = "0";
    return entry;
}

/// The row of a plugin that is loaded now; nothing if the library refuses it.
std::optional<PluginEntry> LoadedEntry(const PluginFile& plugin, const modBass& bass)
{
    const HPLUGIN handle = bass.BASS_PluginLoad(plugin.path.c_str(), 0);
    if (handle == 0)
        return std::nullopt;
    PluginEntry entry;
    entry.FileName = plugin.name;
    entry.HandleText = std::to_string(handle);
    entry.Loaded = true;
    FillFormats(bass, entry, handle);
    return entry;
}

std::optional<PluginEntry> EntryOf(const PluginFile& plugin, const modBass& bass, modINI& settings)
{
    const std::string wanted = settings.ReadSetting(sections::Plugins, plugin.name, "True");
    if (IsTrue(wanted))
        return LoadedEntry(plugin, bass);
    if (IsFalse(wanted))
        return UnloadedEntry(plugin);
    return std::nullopt;
}

} // namespace

std::vector<std::string> PluginFolders(const std::string& programDirectory,
                                       const std::string& applicationDirectory)
{
    std::vector<std::string> folders{programDirectory + FolderName};
    if (applicationDirectory != programDirectory)
        folders.push_back(applicationDirectory + FolderName);
    return folders;
}

std::vector<PluginFile> FindPlugins(ports::Files& files, const std::vector<std::string>& folders)
{
    std::vector<PluginFile> found;
    for (const std::string& folder : folders) {
        for (std::string& path : files.Walk(folder, false)) {
            std::string name = SplitPath(path).name;
            if (MatchesPattern(name, FileMask) && !HasName(found, name))
                found.push_back({.name = std::move(name), .path = std::move(path)});
        }
    }
    return found;
}

void LoadPlugins(const std::vector<PluginFile>& plugins,
                 const modBass& bass,
                 modINI& settings,
                 PluginTable& table)
{
    table = {};
    for (const PluginFile& plugin : plugins) {
        if (table.Entries.size() > PluginTable::MaxRows)
            return;
        if (std::optional<PluginEntry> entry = EntryOf(plugin, bass, settings))
            table.Entries.push_back(std::move(*entry));
    }
}

} // namespace velmo
