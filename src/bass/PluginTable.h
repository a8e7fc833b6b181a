#pragma once

#include "modBass.h"

#include <string>
#include <vector>

namespace velmo {

/// One plugin file.
struct PluginEntry
{
    std::string FileName;   ///< without its folder; also its key in section "Plugins"
    std::string HandleText; ///< the plugin's handle in decimal, "0" if it was not loaded
    bool Loaded = false;    ///< the library holds it
    std::string Extensions; ///< the masks of each format ("*.a;*.b"), formats joined by "#"
    std::string Formats;    ///< the names of the formats, joined by "#"
};

/// The plugins that the last start found. Rows count from 1; the entry at 0 is there and unused,
/// with an empty name. User-interface thread only.
struct PluginTable
{
    std::vector<PluginEntry> Entries{1};

    /// The table has room for so many rows.
    static constexpr std::size_t MaxRows = 255;
};

/// Adds names and masks of the plugin's formats to the record's texts, then cuts the first
/// character of both, which is the "#" in front of the first format.
/// Kept: texts that are not empty before are added to, and lose a character of their own.
void FillFormats(const modBass& bass, PluginEntry& record, HPLUGIN handle);

} // namespace velmo
