#pragma once

#include "cDIBSection.h"

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/PixelArea.h"

#include <vector>

namespace velmo {

/// The outline of a bitmap, and the windows that have it. User-interface thread only; windows to
/// which it stands applied must outlive it.
class cDIBSectionRegion
{
public:
    cDIBSectionRegion() = default;
    cDIBSectionRegion(const cDIBSectionRegion&) = delete;
    cDIBSectionRegion& operator=(const cDIBSectionRegion&) = delete;
    ~cDIBSectionRegion() = default;

    /// Takes everything of the bitmap that is not exactly of the colour `transparent`, holes
    /// included. A region that was there before is destroyed first. False without a bitmap.
    bool Create(const cDIBSection& dib, controls::Colour transparent);

    /// Clears the region from all windows and lets go of it.
    void Destroy();

    bool Applied(const controls::Form& hWnd) const;
    /// Gives the window the region's outline, or its whole rectangle back. Without a region a
    /// window stays as it is.
    void Applied(controls::Form& hWnd, bool apply);
    int AppliedToCount() const { return static_cast<int>(m_windows.size()); }

    /// From top to bottom, in each row from left to right; none overlap.
    const std::vector<controls::PixelArea>& Areas() const { return m_areas; }

private:
    std::vector<controls::PixelArea> m_areas;
    std::vector<controls::Form*> m_windows;
};

} // namespace velmo
