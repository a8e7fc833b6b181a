#pragma once

#include "bass/PluginTable.h"

#include <string>
#include <vector>

namespace velmo {

/// Which files are taken for media: the engine's own formats and those of loaded plugins.
class MediaFilter final
{
public:
    /// Of `plugins` the loaded ones count.
    explicit MediaFilter(const PluginTable& plugins);

    /// Extensions without dot, as `BuildExtensionFilter` last left them. An empty list passes every
    /// file.
    std::vector<std::string> KnownExtensions;

    /// Refills `KnownExtensions`.
    void BuildExtensionFilter();

    /// The filter of the dialogs "Open Media" and "Open And Play": labels and patterns in turn,
    /// parted by "|". All known extensions come first, "All Files" last, the labels between them in
    /// byte order. Goes by `KnownExtensions`.
    std::string OpenMediaFilter() const;

private:
    const PluginTable& m_plugins;
};

/// Whether the text behind the last "." of the file name (all of it if there is none) is one of
/// `extensions`, ignoring case; `name` may be a path. An empty list passes everything.
bool HasKnownExtension(const std::string& name, const std::vector<std::string>& extensions);

} // namespace velmo
