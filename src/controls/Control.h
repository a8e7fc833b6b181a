#pragma once

#include "Property.h"

#include <functional>
#include <string>

namespace velmo::controls {

class Form;

enum class ControlKind
{
    Label,
    Image,
    Picture,
    Timer,
    TextBox,
    ListRows,
    ScrollBar,
    Button,
};

enum class MouseButton
{
    None = 0,
    Left = 1,
    Right = 2,
    Middle = 4,
};

/// Modifier keys of an event, as a sum.
enum ShiftMask : unsigned
{
    ShiftKey = 1,
    ControlKey = 2,
    AltKey = 4,
};

/// One mouse event of a control. `x` and `y` are twips from the control's upper left corner; they
/// lie outside the control when a button was pressed inside and the pointer has left since.
struct MouseEvent
{
    MouseButton button =
        MouseButton::None; ///< the button of the event, of a move the one that is held
    unsigned shift = 0;    ///< of `ShiftMask`
    double x = 0;
    double y = 0;
};

/// Where a control stands on its form. All in twips; 15 twips are one logical pixel.
struct Bounds
{
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// What every control of a form has: a name, a place and slots for events. A control is a plain
/// record: it paints nothing and knows no toolkit. A view shows it and calls its slots; logic reads
/// and writes its properties.
class Control : public PropertyOwner
{
public:
    /// Takes the next place in front of the controls that `form` has. The form must outlive the
    /// control, which is the case for a member of it.
    Control(Form& form, ControlKind kind, std::string name, Bounds bounds);

    const std::string Name;
    const ControlKind Kind;

    Property<double> Left;   ///< twips
    Property<double> Top;    ///< twips
    Property<double> Width;  ///< twips
    Property<double> Height; ///< twips
    Property<bool> Visible{*this, true};
    Property<bool> Enabled{*this, true};
    Property<std::string> ToolTipText{*this};
    /// What a screen reader calls the control; the tool tip, then the name, if empty.
    Property<std::string> AccessibleName{*this};
    /// Whether Tab reaches the control, and Space and Enter press it then. Read when the form is
    /// first shown.
    bool TabStop = false;

    /// The control that this one is a piece of: what stands over that one's rectangle is neither
    /// seen nor takes the mouse.
    const Control* Container = nullptr;

    std::function<void(const MouseEvent&)> MouseDown;
    std::function<void(const MouseEvent&)> MouseMove;
    std::function<void(const MouseEvent&)> MouseUp;
    /// The left button was pressed and released inside the control; comes after `MouseUp`.
    std::function<void()> Click;

    /// Set by what shows the control; called after every change of a property.
    std::function<void()> Changed;

    void PropertyChanged() override;
};

} // namespace velmo::controls
