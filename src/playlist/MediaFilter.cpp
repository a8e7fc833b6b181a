#include "MediaFilter.h"

#include "core/PathRules.h"
#include "core/TextRules.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace velmo {

namespace {

/// A format that the engine opens by itself, as the dialogs name it.
struct BuiltInFormat
{
    const char* name;
    const char* extension;
};

constexpr std::array BuiltInFormats{
    BuiltInFormat{"Waveform audio format",         "wav"},
    BuiltInFormat{"Audio Interchange File Format", "aif"},
    BuiltInFormat{"MPEG-1 Audio Layer III",        "mp3"},
    BuiltInFormat{"MPEG-1 Audio Layer II",         "mp2"},
    BuiltInFormat{"MPEG-1 Audio Layer I",          "mp1"},
    BuiltInFormat{"Ogg Vorbis",                    "ogg"},
    BuiltInFormat{"Tomas Orrin's MO3",             "mo3"},
    BuiltInFormat{"FastTracker 2",                 "xm" },
    BuiltInFormat{"MOD file",                      "mod"},
    BuiltInFormat{"Scream Tracker 3",              "s3m"},
    BuiltInFormat{"Impulse Tracker",               "it" },
    BuiltInFormat{"MultiTracker",                  "mtm"},
    BuiltInFormat{"Unreal Music Format",           "umx"},
};

/// A filter's label with its pattern.
std::string LabelOf(const std::string& name, const std::string& pattern)
{
    return name + " (" + pattern + ")|" + pattern;
}

std::vector<std::string> SplitAtAny(std::string_view text, const char* separators)
{
    std::vector<std::string> pieces;
    if (text.empty())
        return pieces;
    for (;;) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        pieces.emplace_back(text.substr(0, end));
        if (end == text.size())
            return pieces;
        text.remove_prefix(end + 1);
    }
}

/// An extension of a pattern such as "*.wma".
std::string ExtensionOfPattern(const std::string& pattern)
{
    constexpr std::size_t MaskLength = 2;
    return pattern.substr(FirstCharacters(pattern, MaskLength).size());
}

} // namespace

MediaFilter::MediaFilter(const PluginTable& plugins)
    : m_plugins(plugins)
{}

void MediaFilter::BuildExtensionFilter()
{
    KnownExtensions.clear();
    for (const BuiltInFormat& format : BuiltInFormats)
        KnownExtensions.emplace_back(format.extension);
    for (const PluginEntry& plugin : m_plugins.Entries) {
        if (!plugin.Loaded)
            continue;
        for (const std::string& pattern : SplitAtAny(plugin.Extensions, "#;")) {
            std::string extension = ExtensionOfPattern(pattern);
            // Kept: the comparison minds the case.
            if (std::find(KnownExtensions.begin(), KnownExtensions.end(), extension)
                == KnownExtensions.end())
                KnownExtensions.push_back(std::move(extension));
        }
    }
}

std::string MediaFilter::OpenMediaFilter() const
{
    std::vector<std::string> labels;
    labels.reserve(BuiltInFormats.size() + m_plugins.Entries.size());
    for (const BuiltInFormat& format : BuiltInFormats)
        labels.push_back(LabelOf(format.name, std::string("*.") + format.extension));
    for (const PluginEntry& plugin : m_plugins.Entries) {
        if (!plugin.Loaded)
            continue;
        const std::vector<std::string> names = SplitAtAny(plugin.Formats, "#");
        const std::vector<std::string> patterns = SplitAtAny(plugin.Extensions, "#");
        for (std::size_t i = 0; i < std::min(names.size(), patterns.size()); ++i)
            labels.push_back(LabelOf(names[i], patterns[i]));
    }
    std::sort(labels.begin(), labels.end());
    std::string filter = "All Known Audio Files|";
    for (const std::string& extension : KnownExtensions)
        filter += (filter.ends_with('|') ? "*." : ";*.") + extension;
    for (const std::string& label : labels)
        filter += "|" + label;
    return filter + "|All Files (*.*)|*.*";
}

bool HasKnownExtension(const std::string& name, const std::vector<std::string>& extensions)
{
    const std::string file = SplitPath(name).name;
    const std::string extension = file.substr(file.rfind('.') + 1); // all of it without a "."
    return extensions.empty()
           || std::any_of(extensions.begin(), extensions.end(), [&](const std::string& known) {
                  return EqualsIgnoringCase(known, extension);
              });
}

} // namespace velmo
