#include "playlist/MediaFilter.h"

#include <gtest/gtest.h>

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
    for (const char* known : {"/m/a.wma", "/m.x/mp3", "/m/a.mp3.x"})
        EXPECT_TRUE(HasKnownExtension(known, filter.KnownExtensions)) << known;
    for (const char* unknown : {"/m.mp3/a", "/m/a.off", "/m/a."})
        EXPECT_FALSE(HasKnownExtension(unknown, filter.KnownExtensions)) << unknown;
}

} // namespace
} // namespace velmo
