#include "controls/Controls.h"
#include "controls/EventEntry.h"
#include "controls/Form.h"
#include "controls/KeyActions.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace velmo::controls {
namespace {

class PlainForm final : public Form
{
public:
    PlainForm()
        : Form("plain", "Plain", 1500, 750, BorderStyle::None)
    {}

    Label back{*this, "back", {}, "one"};
    Label front{*this, "front", {}, "two"};
};

TEST(Property, TellsItsOwnerOfRealChangesOnly)
{
    PlainForm form;
    int labelChanges = 0;
    int formChanges = 0;
    form.back.Changed = [&] { ++labelChanges; };
    form.Changed = [&] { ++formChanges; };

    form.back.Caption = "one";
    form.back.Left = 0;
    form.Hide();
    EXPECT_EQ(labelChanges, 0);
    EXPECT_EQ(formChanges, 0);

    form.back.Caption = "other";
    form.back.Caption = form.front.Caption;
    form.back.Font = Font{.weight = 700};
    form.Show();
    EXPECT_EQ(labelChanges, 3);
    EXPECT_EQ(formChanges, 1);
    EXPECT_EQ(form.back.Caption.Get(), "two");
}

TEST(Property, HasItsNewValueWhenTheOwnerIsTold)
{
    PlainForm form;
    std::string seen;
    form.back.Changed = [&] { seen = form.back.Caption; };
    form.back.Caption = "new";
    EXPECT_EQ(seen, "new");
}

TEST(Form, KeepsItsControlsFromBackToFront)
{
    PlainForm form;
    EXPECT_THAT(form.Controls(), testing::ElementsAre(&form.back, &form.front));
}

TEST(Slider, TellsWhereItsKnobStands)
{
    class SliderForm final : public Form
    {
    public:
        SliderForm()
            : Form("slider", "", 1, 1, BorderStyle::None)
        {
            knob.SlideOn(track);
        }
        Image track{
            *this, "track", {.left = 100, .width = 1100}
        };
        Image knob{
            *this, "knob", {.left = 100, .width = 100}
        };
        Image other{*this, "other", {}};
    } form;
    struct Case
    {
        double left;
        double value;
    };
    for (const Case& c : {
             Case{100,  0   },
             {350,  0.25},
             {1100, 1   },
             {0,    0   },
             {9000, 1   }
    }) {
        form.knob.Left = c.left;
        EXPECT_DOUBLE_EQ(form.knob.AccessibleValue(), c.value);
        EXPECT_DOUBLE_EQ(form.track.AccessibleValue(), c.value);
    }
    EXPECT_LT(form.other.AccessibleValue(), 0);
    form.track.Width = 100; // no room to slide in
    EXPECT_EQ(form.knob.AccessibleValue(), 0);
}

TEST(EventEntry, EndsThatHandlerAloneAndReportsOneLine)
{
    struct Case
    {
        std::function<void()> handler;
        const char* line;
    };
    const std::vector<Case> cases{
        {[] { throw std::runtime_error("No such\nfile"); }, "velmo: No such file\n"            },
        {[] { throw 5; },                                   "velmo: a failure without a text\n"},
        {[] {},                                             ""                                 },
    };
    for (const Case& c : cases) {
        testing::internal::CaptureStderr();
        CallSlot(c.handler);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), c.line);
    }
}

TEST(EventEntry, PassesOverSlotsThatAreNotSet)
{
    const std::function<void(int)> unset;
    CallSlot(unset, 1);
    int got = 0;
    const std::function<void(int)> slot = [&](int value) { got = value; };
    CallSlot(slot, 7);
    EXPECT_EQ(got, 7);
}

TEST(KeyActions, SliderIsDraggedAsAHandWould)
{
    struct Case
    {
        bool isUpright;
        bool refusesItsEnd;
        double share;
        double place; ///< of the knob afterwards
        bool moves;
    };
    const Case cases[] = {
        {false, false, 0.25, 350,  true },
        {false, false, 2,    1100, true },
        {false, true,  1,    1099, true },
        {false, false, 0,    100,  false},
        {true,  false, 0.25, 850,  true },
        {true,  true,  1,    101,  true },
    };
    for (const Case& c : cases) {
        Form form("slider", "", 1, 1, BorderStyle::None);
        Image track(
            form, "track", {100, 100, c.isUpright ? 100.0 : 1100.0, c.isUpright ? 1100.0 : 100.0});
        Image knob(form, "knob", {100, c.isUpright ? 1100.0 : 100.0, 100, 100});
        knob.SlideOn(track);
        Property<double>& moving = c.isUpright ? knob.Top : knob.Left;
        const auto along = [&](const MouseEvent& event) { return c.isUpright ? event.y : event.x; };
        double pressed = 0;
        std::string events;
        knob.MouseDown = [&](const MouseEvent& event) {
            pressed = along(event);
            events += 'd';
        };
        knob.MouseMove = [&](const MouseEvent& event) {
            const double place = moving + along(event) - pressed;
            if (!c.refusesItsEnd || (place > 100 && place < 1100))
                moving = place;
        };
        knob.MouseUp = [&](const MouseEvent& event) {
            EXPECT_EQ(along(event), pressed) << "the knob has gone along";
            events += 'u';
        };
        SlideTo(track, c.share);
        EXPECT_EQ(moving, c.place) << c.share;
        EXPECT_EQ(events, c.moves ? "du" : "");
    }
}

} // namespace
} // namespace velmo::controls
