#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/frmSplash.h"
#include "forms/wmain.h"

#include <gtest/gtest.h>

namespace velmo::forms {
namespace {

/// Whether every control that can be seen lies inside its form.
testing::AssertionResult HoldsItsControls(const controls::Form& form)
{
    for (const controls::Control* control : form.Controls()) {
        if (control->Kind == controls::ControlKind::Timer)
            continue;
        if (control->Left < 0 || control->Top < 0 || control->Width <= 0 || control->Height <= 0
            || control->Left + control->Width > form.Width
            || control->Top + control->Height > form.Height)
            return testing::AssertionFailure() << control->Name << " of " << form.Name;
    }
    return testing::AssertionSuccess();
}

TEST(Forms, HoldTheirControlsAndStartHiddenAndAtRest)
{
    const wmain main;
    const Playlist playlist;
    const frmSplash splash;
    const ErrMGR error;
    const controls::Form* const forms[] = {&main, &playlist, &splash, &error};
    for (const controls::Form* form : forms) {
        EXPECT_TRUE(HoldsItsControls(*form));
        EXPECT_FALSE(form->Visible);
    }
    // Each is started by the routine that needs it: one that ran before would act on a program that
    // is not up.
    EXPECT_FALSE(main.tmrBASS.Enabled);
    EXPECT_FALSE(playlist.tmrInfo.Enabled);
    EXPECT_FALSE(splash.tmrcZat.Enabled);
}

TEST(Forms, KnobOfTheMainWindowStandsAtTheBarsLeftEndAtFirst)
{
    wmain main;
    EXPECT_EQ(main.imgPositionTicker.AccessibleValue(), 0);
    main.imgPositionTicker.Left = 240 + 3255;
    EXPECT_EQ(main.imgPositionBar.AccessibleValue(), 1);
}

} // namespace
} // namespace velmo::forms
