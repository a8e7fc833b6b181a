#include "core/modINI.h"

#include "support/FakeDialogs.h"
#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(modINI, ReadingWithoutARegisteredSectionIsReported)
{
    using Box = test::FakeDialogs::Box;
    test::FakeSettings file;
    test::FakeDialogs dialogs;
    modINI ini(file, dialogs, "/app");
    EXPECT_EQ(ini.ProfileRead("File1", "none"), "none");
    EXPECT_EQ(dialogs.boxes,
              (std::vector<Box>{
                  {"[Section] and FileName Not Registered in Private.Ini!",
                   "IniFile Logic Error", ports::MessageStyle::Critical}
    }));
    ini.WriteSetting("  Options ", "Convert%20%", "True");
    EXPECT_EQ(file.ProfileRead("Options", "Convert%20%", "", "/app/zuvio.ini"), "True");
    EXPECT_EQ(ini.ReadSetting("options", "Convert%20%", "False"), "True");
    EXPECT_EQ(dialogs.boxes.size(), 1U);
}

} // namespace
} // namespace velmo
