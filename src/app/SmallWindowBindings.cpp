#include "Program.h"

#include "core/CallIfSet.h"

namespace velmo {

/// The windows of the equalizer and of the list manager, which set the slots of their controls
/// themselves.
void Program::BindSmallWindows()
{
    m_equalizerWindow.Calls.CurrentChannel = [this] { return m_transport.CurrentChannel; };
    m_equalizerWindow.Calls.ShapeAndStick = [this] { m_sticky.Load(m_fX); };
    m_equalizerWindow.Calls.Hide = [this] { m_neighbours.HideEqualizer(); };
    m_fX.KeyPress = [this](char32_t key) { m_keys.KeyPress(TransportKeys::Window::Other, key); };
    m_listManager.Calls.ShapeAndStick = [this] { m_sticky.Load(m_frmListMGR); };
    m_listManager.Calls.Hide = [this] { m_neighbours.HideListManager(); };
    m_listManager.Calls.KeyPress = [this](char32_t key) { CallIfSet(m_playlist.KeyPress, key); };
}

} // namespace velmo
