#pragma once

#include "Control.h"

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
    /// The window's ground, 0x00BBGGRR; a form without a frame shows brushed metal instead.
    Property<std::uint32_t> BackColor{*this, 0x2F2B28};

    /// Set once the load of the window that this is the form of has run.
    bool Loaded = false;
    /// Read when the form is first shown.
    StartPlace Place = StartPlace::AsSet;
    /// Panes of black glass let into the body, in twips. Read when the form is first shown.
    std::vector<Bounds> Panes;

    std::function<void(const MouseEvent&)> MouseDown;
    std::function<void(const MouseEvent&)> MouseMove;
    std::function<void(const MouseEvent&)> MouseUp;
    /// A key that makes a character, as its code point.
    std::function<void(char32_t)> KeyPress;
    /// The window has been minimised or is back; `State` tells which. Comes once a change, whoever
    /// made it.
    std::function<void()> Resize;
    /// The window manager or the session asks the window to close. Unset: the form is hidden.
    std::function<void()> QueryClose;

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
