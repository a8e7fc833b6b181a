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

TEST(Slider, TellsWhereItsKnobStands)
{
    Form form("slider", "", 1, 1, BorderStyle::None);
    Image track(form, "track", {.left = 100, .width = 1100});
    Image knob(form, "knob", {.left = 100, .width = 100});
    knob.SlideOn(track);
    const auto expect = [&](double left, double value) {
        knob.Left = left;
        EXPECT_DOUBLE_EQ(knob.AccessibleValue(), value);
        EXPECT_DOUBLE_EQ(track.AccessibleValue(), value);
    };
    expect(100, 0);
    expect(350, 0.25);
    expect(9000, 1);
    expect(0, 0);
    track.Width = 100; // no room to slide in
    expect(100, 0);
    EXPECT_LT(Image(form, "other", {}).AccessibleValue(), 0);
}

} // namespace
} // namespace velmo::controls
