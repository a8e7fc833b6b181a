#include "Neighbours.h"

#include "isGlued.h"

#include "core/CallIfSet.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

namespace {

void PlaceBelow(const controls::Form& upper, controls::Form& lower)
{
    lower.Top = upper.Top + upper.Height;
    lower.Left = upper.Left.Get();
}

} // namespace

Neighbours::Neighbours(NeighbourForms forms, modINI& settings, std::function<void()> checkGlueing)
    : m_forms(forms)
    , m_settings(settings)
    , m_checkGlueing(std::move(checkGlueing))
{}

void Neighbours::Load()
{
    forms::frmResources& menus = m_forms.resources;
    m_forms.playlist.Visible = IsWanted(keys::ShowPL);
    m_forms.fX.Visible = IsWanted(keys::ShowFX);
    m_forms.frmListMGR.Visible = IsWanted(keys::ShowPLMGR);
    menus.submnuShowPlaylist.Checked = m_forms.playlist.Visible;
    menus.submnuShowEq.Checked = m_forms.fX.Visible;
    menus.submnuShowPlaylistManager.Checked = m_forms.frmListMGR.Visible;
    TakePlaces();
}

void Neighbours::Follow()
{
    if (IsTrue(m_settings.ReadSetting(sections::Display, keys::StickyWindows, "True")))
        TakePlaces();
}

void Neighbours::TogglePlaylist()
{
    m_forms.playlist.Visible = !m_forms.playlist.Visible;
    NotePlaylist(m_forms.playlist.Visible);
}

void Neighbours::ToggleEqualizer()
{
    if (m_forms.fX.Visible)
        HideEqualizer();
    else
        ShowEqualizer();
}

void Neighbours::ToggleListManager()
{
    if (m_forms.frmListMGR.Visible)
        HideListManager();
    else
        ShowListManager();
}

void Neighbours::HideEqualizer()
{
    m_forms.fX.Hide();
    Note(keys::ShowFX, m_forms.resources.submnuShowEq, false);
    if (m_forms.frmListMGR.Visible && isGlued(m_forms.frmListMGR, m_forms.fX)
        && isGlued(m_forms.fX, m_forms.wmain))
        PlaceBelow(m_forms.wmain, m_forms.frmListMGR);
    CallIfSet(m_checkGlueing);
}

void Neighbours::HideListManager()
{
    m_forms.frmListMGR.Hide();
    Note(keys::ShowPLMGR, m_forms.resources.submnuShowPlaylistManager, false);
}

void Neighbours::NotePlaylist(bool isShown)
{
    Note(keys::ShowPL, m_forms.resources.submnuShowPlaylist, isShown);
}

void Neighbours::ShowEqualizer()
{
    const bool managerFollows =
        m_forms.frmListMGR.Visible && isGlued(m_forms.frmListMGR, m_forms.wmain);
    PlaceBelow(m_forms.wmain, m_forms.fX);
    if (managerFollows)
        PlaceBelow(m_forms.fX, m_forms.frmListMGR);
    m_forms.fX.Show();
    Note(keys::ShowFX, m_forms.resources.submnuShowEq, true);
    CallIfSet(m_checkGlueing);
}

void Neighbours::ShowListManager()
{
    const bool standsBelow =
        m_forms.fX.Visible && m_forms.wmain.Top + m_forms.wmain.Height == m_forms.fX.Top;
    if (standsBelow)
        PlaceBelow(m_forms.fX, m_forms.frmListMGR);
    else
        PlaceBelow(m_forms.wmain, m_forms.frmListMGR);
    m_forms.frmListMGR.Show();
    Note(keys::ShowPLMGR, m_forms.resources.submnuShowPlaylistManager, true);
    CallIfSet(m_checkGlueing);
}

void Neighbours::TakePlaces()
{
    m_forms.playlist.Left = m_forms.wmain.Left + m_forms.wmain.Width;
    m_forms.playlist.Top = m_forms.wmain.Top.Get();
    PlaceBelow(m_forms.wmain, m_forms.fX);
    if (m_forms.fX.Visible)
        PlaceBelow(m_forms.fX, m_forms.frmListMGR);
    else
        PlaceBelow(m_forms.wmain, m_forms.frmListMGR);
    CallIfSet(m_checkGlueing);
}

void Neighbours::Note(const char* key, controls::MenuEntry& mark, bool isShown)
{
    mark.Checked = isShown;
    m_settings.WriteSetting(sections::RTM, key, isShown ? "True" : "False");
}

bool Neighbours::IsWanted(const char* key)
{
    return IsTrue(m_settings.ReadSetting(sections::RTM, key, "true"));
}

} // namespace velmo
