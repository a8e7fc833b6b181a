#pragma once

#include "PluginTable.h"

#include "core/modINI.h"
#include "ports/Files.h"

#include <string>
#include <vector>

namespace velmo {

/// A file that may be a plugin.
struct PluginFile
{
    std::string name; ///< without its folder
    std::string path;
};

/// The folders of plugins, each with a separator at its end: that beside the program, then the
/// user's own, if that is another.
std::vector<std::string> PluginFolders(const std::string& programDirectory,
                                       const std::string& applicationDirectory);

/// The files "bass*.so" of the folders, in the order of the folders and by name in each; of several
/// files of one name the first. A folder that is not there gives none.
std::vector<PluginFile> FindPlugins(ports::Files& files, const std::vector<std::string>& folders);

/// Fills the table anew from the files: one that its key in section "Plugins" (default "True") says
/// "true" of is loaded and gets a row unless the library refuses it, one that is "false" gets a row
/// and is left alone; any other value gives no row. Stops at a full table.
void LoadPlugins(const std::vector<PluginFile>& plugins,
                 const modBass& bass,
                 modINI& settings,
                 PluginTable& table);

} // namespace velmo
