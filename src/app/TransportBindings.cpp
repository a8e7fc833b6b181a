#include "Program.h"

namespace velmo {

/// The transport's controls, the volume, and the keys of all windows.
void Program::BindTransport()
{
    using Event = controls::MouseEvent;
    m_wmain.imgPlay.MouseUp = [this](const Event& event) { m_controls.imgPlay_MouseUp(event); };
    m_wmain.imgPause.MouseUp = [this](const Event& event) { m_controls.imgPause_MouseUp(event); };
    m_wmain.imgStop.MouseUp = [this](const Event& event) { m_controls.imgStop_MouseUp(event); };
    m_wmain.imgNext.MouseUp = [this](const Event& event) { m_controls.imgNext_MouseUp(event); };
    m_wmain.imgBack.MouseUp = [this](const Event& event) { m_controls.imgBack_MouseUp(event); };
    m_wmain.imgOpen.MouseUp = [this](const Event& event) { m_controls.imgOpen_MouseUp(event); };

    VolumeSlider& volume = m_mainWindow.Volume();
    m_wmain.imgVolumeBar.MouseDown = [&volume](const Event& event) {
        volume.imgVolumeBar_MouseDown(event);
    };
    m_wmain.imgVolumeTicker.MouseDown = [&volume](const Event& event) {
        volume.imgVolumeTicker_MouseDown(event);
    };
    m_wmain.imgVolumeTicker.MouseMove = [&volume](const Event& event) {
        volume.imgVolumeTicker_MouseMove(event);
    };
    m_wmain.imgVolumeTicker.MouseUp = [&volume](const Event& event) {
        volume.imgVolumeTicker_MouseUp(event);
    };

    m_keyCalls.AddFilesDialog = [this] { m_addingDialogs.AddFilesDialog(); };
    m_keyCalls.OpenListDialog = [this] { m_listDialogs.OpenListDialog(); };
    m_keyCalls.SaveListDialog = [this] { m_listDialogs.SaveListDialog(); };
    m_keyCalls.RestartCore = [this] { m_restartCore.Queue(); };
    m_keyCalls.ExitProgram = [this] { m_exitProgram.Run(); };
    m_wmain.KeyPress = [this](char32_t key) { m_keys.KeyPress(TransportKeys::Window::Main, key); };
    const auto others = [this](char32_t key) {
        m_keys.KeyPress(TransportKeys::Window::Other, key);
    };
    m_playlist.KeyPress = others;
    m_fX.KeyPress = others;
    m_frmListMGR.KeyPress = others;
}

} // namespace velmo
