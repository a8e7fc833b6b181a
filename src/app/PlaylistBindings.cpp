#include "Program.h"

namespace velmo {

/// The playlist's window and the dialogs that it opens.
void Program::BindPlaylist()
{
    m_playlist.tmrInfo.Tick = [this] { m_titleReader.tmrInfo_Timer(); };
    m_frmAddLocation.btnAdd.Click = [this] { m_addLocation.btnAdd_Click(); };
    m_frmAddLocation.btnCancel.Click = [this] { m_addLocation.btnCancel_Click(); };
}

} // namespace velmo
