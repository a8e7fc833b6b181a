#include "playlist/MediaFilter.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(MediaFilter, LoadedPluginsAddWhatIsNotThereYet)
{
    PluginTable plugins;
    plugins.Entries.push_back({"bassx.so", "1", true, "*.WMA;*.mp3#*.x", "Windows Media#X"});
    plugins.Entries.push_back({"off.so", "0", false, "*.off", "Off"});
    plugins.Entries.push_back({"none.so", "2", true, "", ""}); // no format at all
    MediaFilter filter(plugins);
    EXPECT_TRUE(HasKnownExtension("any.thing", filter.KnownExtensions)) << "empty passes all";
    filter.BuildExtensionFilter();
    EXPECT_THAT(filter.KnownExtensions,
                ::testing::ElementsAre("wav",
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
                                       "WMA",
                                       "x"));
    EXPECT_EQ(filter.OpenMediaFilter(),
              "All Known Audio Files|*.wav;*.aif;*.mp3;*.mp2;*.mp1;*.ogg;*.mo3;*.xm;*.mod;*.s3m;"
              "*.it;*.mtm;*.umx;*.WMA;*.x|"
              "Audio Interchange File Format (*.aif)|*.aif|"
              "FastTracker 2 (*.xm)|*.xm|"
              "Impulse Tracker (*.it)|*.it|"
              "MOD file (*.mod)|*.mod|"
              "MPEG-1 Audio Layer I (*.mp1)|*.mp1|"
              "MPEG-1 Audio Layer II (*.mp2)|*.mp2|"
              "MPEG-1 Audio Layer III (*.mp3)|*.mp3|"
              "MultiTracker (*.mtm)|*.mtm|"
              "Ogg Vorbis (*.ogg)|*.ogg|"
              "Scream Tracker 3 (*.s3m)|*.s3m|"
              "Tomas Orrin's MO3 (*.mo3)|*.mo3|"
              "Unreal Music Format (*.umx)|*.umx|"
              "Waveform audio format (*.wav)|*.wav|"
              "Windows Media (*.WMA;*.mp3)|*.WMA;*.mp3|"
              "X (*.x)|*.x|"
              "All Files (*.*)|*.*");
    const std::pair<const char*, bool> names[] = {
        {"/m/a.wma",   true },
        {"/m/a.Ogg",   true },
        {"/m.x/mp3",   true },
        {"/m.mp3/a",   false},
        {"/m/a.mp3.x", true },
        {"/m/a.off",   false},
        {"/m/a.",      false},
    };
    for (const auto& [name, known] : names)
        EXPECT_EQ(HasKnownExtension(name, filter.KnownExtensions), known) << name;
}

} // namespace
} // namespace velmo
