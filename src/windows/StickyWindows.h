#pragma once

#include "cDIBSectionRegion.h"
#include "cMagneticWnd.h"

#include "controls/Form.h"
#include "controls/PictureRef.h"
#include "ports/Screens.h"

#include <map>

namespace velmo {

/// Gives a window its ground: the picture, and the picture's outline through `region`, which is
/// made anew for it. Black, of which the picture's corners are, is cut out. Without such a picture
/// the window stays a rectangle.
void ShapeWindow(controls::Form& form, controls::PictureRef picture, cDIBSectionRegion& region);

/// What every window's load and unload do about its outline and about its sticking to the others.
/// User-interface thread only.
class StickyWindows
{
public:
    explicit StickyWindows(ports::Screens& screens);

    /// Cuts the window out of its picture, which its form names, and registers it; its parent is
    /// the window's owner. Again for a window that has been loaded before.
    void Load(controls::Form& form);
    /// None sticks any more.
    void RemoveAll();
    /// All are rectangles again.
    void ReleaseRegions();

    void CheckGlueing() { m_magnet.CheckGlueing(); }
    /// Windows of which nothing can be taken hold of come back: after the load, and when the
    /// screens have changed.
    void BringBack();

private:
    ports::Screens& m_screens;
    cMagneticWnd m_magnet;
    std::map<controls::Form*, cDIBSectionRegion> m_regions;
};

} // namespace velmo
