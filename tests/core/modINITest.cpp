#include "core/modINI.h"

#include "core/SettingsKeys.h"
#include "support/FakeDialogs.h"
#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class modINITest : public testing::Test
{
protected:
    test::FakeSettings file;
    test::FakeDialogs dialogs;
    modINI ini{file, dialogs, "/app"};
};

TEST_F(modINITest, SettingsLieInTheApplicationDirectory)
{
    ini.WriteSetting("  Options ", keys::ConvertPercent20, "True");
    EXPECT_EQ(file.ProfileRead("Options", "Convert%20%", "", "/app/zuvio.ini"), "True");
    EXPECT_EQ(ini.ReadSetting("options", keys::ConvertPercent20, "False"), "True");
    EXPECT_EQ(ini.ReadSetting("Options", keys::MwStep, "1"), "1");
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(modINITest, ReadingWithoutARegisteredSectionIsReported)
{
    EXPECT_EQ(ini.ProfileRead("File1", "none"), "none");
    EXPECT_EQ(dialogs.boxes,
              (std::vector<test::FakeDialogs::Box>{
                  {"[Section] and FileName Not Registered in Private.Ini!",
                   "IniFile Logic Error", ports::MessageStyle::Critical}
    }));
    file.ProfileWrite("playlist", "File1", "/a.mp3", "/l.pls");
    ini.ProfileRegister(" playlist ", " /l.pls ");
    EXPECT_EQ(ini.ProfileRead("File1", "none"), "/a.mp3");
    EXPECT_EQ(dialogs.boxes.size(), 1U);
}

} // namespace
} // namespace velmo
