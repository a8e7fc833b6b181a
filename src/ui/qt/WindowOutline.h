#pragma once

#include "controls/Form.h"

#include <cstdint>
#include <vector>

class QWidget;

namespace velmo::qt {

/// Keeps a window's outline that of its form. The form tells it in logical pixels; at every scale
/// each pixel of the screen goes by the logical one that its middle lies in, so that an outline is
/// the same whatever the scale. User-interface thread.
class WindowOutline
{
public:
    /// Both must outlive this.
    WindowOutline(const controls::Form& form, QWidget& window);

    /// After a change of the form, and when the window is shown; it must have been made.
    void Sync();

private:
    void Apply();

    const controls::Form& m_form;
    QWidget& m_window;
    std::vector<controls::PixelArea> m_applied;
    double m_ratio = 1.0;
    std::uint32_t m_id = 0; ///< the window that has it
};

} // namespace velmo::qt
