#pragma once

#include "SnapRules.h"

#include "controls/Form.h"
#include "controls/PixelGrid.h"
#include "ports/Screens.h"

#include <vector>

namespace velmo {

/// Has the windows stick to each other and to the edges of the work area while they are dragged.
/// A window that has a parent and touches it, or touches one that does, is glued: it moves with its
/// parent. A parent moves alone only if no window touches it; a glued window that is dragged itself
/// leaves the block.
///
/// Everything is worked out in pixels of the screens, from the places that the windows' forms have
/// when a drag begins: where the windowing system has got to by then is never asked. User-interface
/// thread only.
class cMagneticWnd
{
public:
    explicit cMagneticWnd(ports::Screens& screens);
    cMagneticWnd(const cMagneticWnd&) = delete;
    cMagneticWnd& operator=(const cMagneticWnd&) = delete;
    /// Gives the windows their slots back.
    ~cMagneticWnd();

    /// Registers a window and sets the slots of its form that tell of drags. False, and nothing
    /// else, for null and for a window that is registered.
    bool AddWindow(controls::Form* hWnd, controls::Form* hWndParent = nullptr);
    /// False if the window is not registered. Its children stay, without a parent.
    bool RemoveWindow(const controls::Form* hWnd);

    /// Works out anew which windows are glued.
    void CheckGlueing();

    /// How near a window has to come to be caught, in logical pixels.
    int SnapWidth() const { return m_snapWidth; }
    void SetSnapWidth(int logicalPixels) { m_snapWidth = logicalPixels; }

    /// All registered windows, in the order of their registration.
    std::vector<controls::Form*> Windows() const;
    /// The windows that move as one with that one: itself; if it is glued, its parent and all that
    /// are glued to it, else those glued to it.
    std::vector<controls::Form*> BlockOf(const controls::Form& form) const;

private:
    struct WndRecord
    {
        controls::Form* hWnd = nullptr;
        controls::Form* hWndParent = nullptr;
        bool Glued = false;
    };

    void OnEnterSizeMove(const controls::Form& form, ports::ScreenPoint cursor);
    void OnMoving(const controls::Form& form, ports::ScreenPoint cursor, ports::ScreenRect& rect);
    void RecalcGlue();
    std::size_t IndexOfWindow(const controls::Form* hWnd) const;
    bool IsCarriedBy(std::size_t index, const controls::Form& form) const;
    SnapShift ShiftOf(const controls::Form& form, const ports::ScreenRect& rect) const;
    void Hook(controls::Form& form);
    static void Unhook(controls::Form& form);

    ports::Screens& m_screens;
    int m_snapWidth = 10;

    /// Entry 0 has no window: it stands for the work area.
    std::vector<WndRecord> m_wnds{WndRecord{}};
    /// Entry 0 is the work area, entry i the rectangle of `m_wnds[i]`; those of a drag's start
    /// until its end.
    std::vector<ports::ScreenRect> m_rects{ports::ScreenRect{}};
    ports::ScreenPoint m_cursorStart;
    ports::ScreenPoint m_cursorNow;
    ports::ScreenPoint m_dragOffset; ///< the dragged window's corner less the cursor
    controls::PixelGrid m_grid{1.0};
    int m_snapPixels = 0; ///< the snap width on the screens
};

} // namespace velmo
