#include "frmAddLocation.h"

namespace velmo::forms {

frmAddLocation::frmAddLocation()
    : Form("frmAddLocation", "Add Location (URL)", 5400, 1590, controls::BorderStyle::Fixed)
    , lblLocation(*this, "lblLocation", {150, 195, 900, 255}, "Location:")
    , txtLocation(*this, "txtLocation", {1095, 150, 4155, 345})
    , lblName(*this, "lblName", {150, 645, 900, 255}, "Name:")
    , txtName(*this, "txtName", {1095, 600, 4155, 345})
    , btnAdd(*this, "btnAdd", {3000, 1080, 1080, 375}, "Add")
    , btnCancel(*this, "btnCancel", {4170, 1080, 1080, 375}, "Cancel")
{
    Place = controls::StartPlace::ScreenCentre;
    for (controls::Label* label : {&lblLocation, &lblName})
        label->BackColor = BackColor.Get();
    for (controls::TextBox* box : {&txtLocation, &txtName}) {
        box->Locked = false;
        box->Lines = controls::TextLines::One;
    }
    txtLocation.AccessibleName = "Location";
    txtName.AccessibleName = "Name";
}

} // namespace velmo::forms
