#include "controls/Controls.h"
#include "controls/Form.h"

#include <gtest/gtest.h>

namespace velmo::controls {
namespace {

TEST(Property, TellsItsOwnerOfRealChangesOnlyOnceItHasTheNewValue)
{
    Form form("plain", "Plain", 1500, 750, BorderStyle::None);
    Label label(form, "label", {}, "one");
    const Label other(form, "other", {}, "two");
    std::string labelChanges;
    int formChanges = 0;
    label.Changed = [&] { labelChanges += label.Caption.Get() + " "; };
    form.Changed = [&] { ++formChanges; };
    label.Caption = "one";
    label.Left = 0;
    form.Hide();
    label.Caption = "new";
    label.Caption = other.Caption;
    label.Font = Font{.weight = 700};
    form.Show();
    EXPECT_EQ(labelChanges, "new two two ");
    EXPECT_EQ(formChanges, 1);
}

} // namespace
} // namespace velmo::controls
