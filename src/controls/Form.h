#pragma once

#include "Control.h"
#include "PictureRef.h"
#include "PixelArea.h"

#include "ports/Screens.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace velmo::controls {

enum class WindowState
{
    Normal = 0,
    Minimized = 1,
};

enum class BorderStyle
{
    None,  ///< no frame of the window manager's: the form draws its own
    Fixed, ///< framed, cannot be sized
};

/// Where a form appears when it is shown for the first time.
enum class StartPlace
{
    AsSet,        ///< at `Left`, `Top`
    ScreenCentre, ///< in the middle of the first screen; `Left` and `Top` tell where afterwards
};

/// A window as a record of controls. It is shown by a view; logic works on it alone. The position
/// is that of the window's upper left corner on the virtual desktop, in twips. User-interface
/// thread only.
class Form : public PropertyOwner
{
public:
    /// `width` and `height` are those of the area inside a frame, in twips.
    Form(std::string name, std::string caption, double width, double height, BorderStyle border);

    const std::string Name;
    const BorderStyle Border;

    Property<std::string> Caption;
    Property<double> Left{*this};
    Property<double> Top{*this};
    Property<double> Width;
    Property<double> Height;
    Property<bool> Visible{*this, false};
    /// Whether the window and its controls take mouse and keys.
    Property<bool> Enabled{*this, true};
    Property<bool> AlwaysOnTop{*this, false};
    Property<WindowState> State{*this, WindowState::Normal};
    /// The window's ground where it has no picture, 0x00BBGGRR.
    Property<std::uint32_t> BackColor{*this, 0x2F2B28};

    /// The window's ground, if it has a picture for it.
    Property<PictureRef> Picture{*this};
    /// The parts of the window that are seen and take the mouse, in logical pixels from its upper
    /// left corner. Empty: all of its rectangle.
    Property<std::vector<PixelArea>> Outline{*this};

    /// The window beside which this one stands: it stays in front of that one and is minimised with
    /// it, and has no place of its own in the task bar. Read when the form is first shown.
    Form* Owner = nullptr;

    /// Set once the load of the window that this is the form of has run.
    bool Loaded = false;
    /// Read when the form is first shown.
    StartPlace Place = StartPlace::AsSet;

    std::function<void(const MouseEvent&)> MouseDown;
    std::function<void(const MouseEvent&)> MouseMove;
    std::function<void(const MouseEvent&)> MouseUp;
    /// A key that makes a character, as its code point.
    std::function<void(char32_t)> KeyPress;
    /// The window has been minimised or is back; `State` tells which. Comes once a change, whoever
    /// made it.
    std::function<void()> Resize;
    /// The window's first picture has been painted; comes once, after that.
    std::function<void()> FirstPicture;
    /// The window manager or the session asks the window to close. Unset: the form is hidden.
    std::function<void()> QueryClose;

    /// The user takes hold of the window to move it: where the pointer is.
    std::function<void(ports::ScreenPoint)> EnterSizeMove;
    /// The pointer has moved on, and where the window would go; may be changed.
    std::function<void(ports::ScreenPoint, ports::ScreenRect&)> Moving;
    /// The user has let go of the window.
    std::function<void()> ExitSizeMove;
    /// The window has been minimised or brought back; comes before `Resize`.
    std::function<void()> SysCommand;
    /// Set by what shows the form: the first picture has been painted.
    bool HasPicture = false;
    /// Set by what shows the form: the window fills the screen's work area.
    bool Zoomed = false;

    /// Set by what shows the form: after every change of a property of the form itself.
    std::function<void()> Changed;
    /// Set by what shows the form: paint now, without waiting for the event loop.
    std::function<void()> RepaintNow;
    /// Set by what shows the form: come to the front and take the keyboard.
    std::function<void()> Activate;
    /// Set by what shows the form: called from a `MouseDown`, the window follows the pointer until
    /// the button is released. Where a left press meets neither a slot of the control nor one of
    /// the form, that happens by itself.
    std::function<void()> BeginDrag;

    /// In the order in which they were made, which is the order from back to front.
    const std::vector<Control*>& Controls() const;

    void Show();
    void Hide();

    /// For the constructor of a control: puts it in front of those that the form has.
    void Add(Control& control);

    void PropertyChanged() override;

private:
    std::vector<Control*> m_controls;
};

} // namespace velmo::controls
