#include "frmAddLocation.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

frmAddLocation::frmAddLocation(forms::frmAddLocation& form,
                               forms::Playlist& playlist,
                               modINI& settings)
    : m_form(form)
    , m_playlist(playlist)
    , m_settings(settings)
{}

void frmAddLocation::Open()
{
    m_form.AlwaysOnTop =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::AlwaysOnTop, "false"));
    if (!m_form.Visible) {
        m_form.txtLocation.Text = std::string();
        m_form.txtName.Text = std::string();
    }
    m_form.Show();
}

void frmAddLocation::btnAdd_Click()
{
    const std::string row = std::to_string(m_playlist.pl.Count() + 1);
    m_playlist.pl.Add({.Text = row + ". " + m_form.txtName.Text.Get(),
                       .Length = {},
                       .Path = m_form.txtLocation.Text});
    m_form.Hide();
}

void frmAddLocation::btnCancel_Click()
{
    m_form.Hide();
}

} // namespace velmo
