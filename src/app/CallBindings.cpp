#include "Program.h"

namespace velmo {

/// What keys, pictures and menus reach, and the keys of the main window.
void Program::BindCalls()
{
    m_keyCalls.AddFilesDialog = [this] { m_addingDialogs.AddFilesDialog(); };
    m_keyCalls.OpenListDialog = [this] { m_listDialogs.OpenListDialog(); };
    m_keyCalls.SaveListDialog = [this] { m_listDialogs.SaveListDialog(); };
    m_keyCalls.RestartCore = [this] { m_restartCore.Queue(); };
    m_keyCalls.ExitProgram = [this] { m_exitProgram.Run(); };
    m_keyCalls.STClose = [this] { m_stClose.Run(); };
    m_wmain.KeyPress = [this](char32_t key) { m_keys.KeyPress(TransportKeys::Window::Main, key); };
}

} // namespace velmo
