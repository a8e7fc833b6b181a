#include "Playlist.h"

#include "wmain.h"

#include "core/CallIfSet.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

using controls::MouseButton;
using controls::MouseEvent;

Playlist::Playlist(PlaylistForms forms,
                   PlaylistModules modules,
                   modINI& settings,
                   ports::Files& files,
                   std::string applicationDirectory)
    : m_forms(forms)
    , m_form(forms.playlist)
    , m_list(modules.buttons.list)
    , m_neighbours(modules.neighbours)
    , m_adding(modules.adding)
    , m_settings(settings)
    , m_files(files)
    , m_applicationDirectory(std::move(applicationDirectory))
    , m_buttons(m_form, modules.buttons)
    , m_commands(m_form, forms.wmain, settings, modules.commands)
    , m_scrolling(m_form, m_list)
    , m_scBar(m_form.scBar)
{
    BindWindow();
    BindList();
    BindScrollBar();
    m_commands.BindMenu(forms.resources);
}

void Playlist::Load()
{
    constexpr double LengthColumn = 600;
    const auto isOn = [&](const char* key) {
        return IsTrue(m_settings.ReadSetting(sections::Options, key, "False"));
    };
    m_form.pl.LengthColumnWidth = LengthColumn;
    m_form.AlwaysOnTop = isOn(keys::AlwaysOnTop);
    m_form.pl.HotTracking = isOn(keys::HotTracking);
    m_form.pl.HoverSelection = isOn(keys::HoverSelection);
    Leave();
    m_scrolling.ReadStep(m_settings);
    m_form.Loaded = true;
}

void Playlist::Close()
{
    maincapclose_MouseDown();
    maincapclose_MouseUp();
}

void Playlist::BindWindow()
{
    m_form.QueryClose = [this] { Close(); };
    m_form.MouseMove = [this](const MouseEvent&) { Leave(); };
    m_form.MouseDown = [this](const MouseEvent& event) {
        if (event.button == MouseButton::Left)
            CallIfSet(m_form.BeginDrag);
    };
    // A letter that is typed in the list comes here, too.
    m_form.KeyPress = [this](char32_t character) { m_commands.pl_KeyPress(character); };
    const controls::PictureRow alone({});
    alone.Bind(m_form.maincapclose,
               {.pressed =
                    [this](const MouseEvent& event) {
                        if (event.button == MouseButton::Left)
                            maincapclose_MouseDown();
                    },
                .act =
                    [this](const MouseEvent& event) {
                        if (event.button == MouseButton::Left
                            && ReleasedInside(m_form.maincapclose, event))
                            maincapclose_MouseUp();
                    }});
}

void Playlist::BindList()
{
    controls::ListRows& pl = m_form.pl;
    pl.MouseMove = [this](const MouseEvent&) { Leave(); };
    pl.MouseUp = [this](const MouseEvent& event) { pl_MouseUp(event); };
    pl.Click = [this] { m_scrolling.pl_Click(); };
    pl.DblClick = [this] { m_commands.pl_DblClick(); };
    pl.KeyDown = [this](int keyCode) { pl_KeyDown(keyCode); };
    pl.MouseWheel = [this](int delta) { m_scrolling.MouseWheel(delta); };
    pl.OLEDragDrop = [this](const std::vector<std::string>& paths) { m_adding.pl_Drop(paths); };
    pl.AfterLabelEdit = [&pl](std::size_t row, const std::string& text) { pl.SetText(row, text); };
}

void Playlist::BindScrollBar()
{
    m_form.scBar.Change = [this](bool goesDown, std::int32_t position) {
        m_scrolling.scBar_Change(goesDown, position);
    };
    m_form.scBar.Click = [this] { CallIfSet(m_form.pl.SetFocus); };
}

/// The press alone decides that the window stays away at the next start.
void Playlist::maincapclose_MouseDown()
{
    m_neighbours.NotePlaylist(false);
}

void Playlist::maincapclose_MouseUp()
{
    m_files.SetCurrentDirectory(m_applicationDirectory);
    m_list.SaveInternalList();
    m_form.Hide();
}

void Playlist::pl_KeyDown(int keyCode)
{
    constexpr int Delete = 46;
    if (keyCode == Delete && m_form.pl.Count() > 0)
        m_list.DeleteSelectedEntries();
    m_scrolling.pl_KeyDown(keyCode);
}

void Playlist::pl_MouseUp(const MouseEvent& event)
{
    if (event.button == MouseButton::Right)
        CallIfSet(m_forms.resources.Menu2.PopUpAtPointer);
    m_commands.pl_MouseUp(event);
}

void Playlist::Leave()
{
    m_buttons.Leave();
    m_form.maincapclose.ShowNormal();
}

} // namespace velmo
