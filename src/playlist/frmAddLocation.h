#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/frmAddLocation.h"

namespace velmo {

/// The handlers of the window that adds an internet location. User-interface thread only.
class frmAddLocation final
{
public:
    frmAddLocation(forms::frmAddLocation& form, forms::Playlist& playlist, modINI& settings);

    /// Shows the window with empty fields.
    void Open();

    /// Adds what was typed, whatever it is, and closes the window. Kept: the row always begins with
    /// its number, and nothing is saved.
    void btnAdd_Click();
    void btnCancel_Click();

private:
    forms::frmAddLocation& m_form;
    forms::Playlist& m_playlist;
    modINI& m_settings;
};

} // namespace velmo
