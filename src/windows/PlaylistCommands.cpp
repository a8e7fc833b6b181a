#include "PlaylistCommands.h"

#include "core/CallIfSet.h"
#include "core/Ignoring.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

PlaylistCommands::PlaylistCommands(forms::Playlist& form,
                                   forms::wmain& wmain,
                                   modINI& settings,
                                   PlaylistCommandModules modules)
    : m_form(form)
    , m_wmain(wmain)
    , m_settings(settings)
    , m_modules(modules)
{}

void PlaylistCommands::BindMenu(forms::frmResources& menus)
{
    menus.submnuPlay.Click = [this] { submnuPlay_Click(); };
    menus.submnuPlayRandom.Click = [this] { m_modules.transport.PlayRandomEntry(); };
    menus.submnuDeleteSelected.Click = [this] { m_modules.list.DeleteSelectedEntries(); };
    menus.submnuReloadtag.Click = [this] { submnuReloadtag_Click(); };
    menus.submnuEditEntry.Click = [this] { CallIfSet(m_form.pl.StartLabelEdit); };
}

void PlaylistCommands::pl_DblClick()
{
    if (IsFalse(SingleClickSetting()))
        Ignoring([&] { m_modules.transport.PlaySelected(); });
}

void PlaylistCommands::pl_MouseUp(const controls::MouseEvent& event)
{
    if (event.button == controls::MouseButton::Left && IsTrue(SingleClickSetting()))
        Ignoring([&] { m_modules.transport.PlaySelected(); });
}

void PlaylistCommands::pl_KeyPress(char32_t character)
{
    switch (character) {
    case U'N':
    case U'n': Next(); break;
    case U'B':
    case U'b': Back(); break;
    default: m_modules.keys.KeyPress(TransportKeys::Window::Other, character); break;
    }
}

void PlaylistCommands::submnuPlay_Click()
{
    if (m_form.pl.Count() == 0)
        return;
    m_modules.state.AdvanceRequested = false;
    m_modules.transport.PlaySelected();
}

void PlaylistCommands::submnuReloadtag_Click()
{
    controls::ListRows& rows = m_form.pl;
    const std::size_t row = rows.SelectedEntry();
    std::string path = rows.Row(row).Path; // reading rewrites it; the entry keeps its own
    std::string title = m_modules.tags.ReadFileTitle(path);
    if (m_modules.list.ShowsNumbers())
        title.insert(0, std::to_string(row) + ". ");
    rows.SetText(row, title);
}

std::string PlaylistCommands::SingleClickSetting()
{
    return m_settings.ReadSetting(sections::Options, keys::PlayOnSingleClick, "False");
}

void PlaylistCommands::Next()
{
    const std::size_t row = m_form.pl.SelectedEntry();
    PlayRow(row < m_form.pl.Count() ? row + 1 : 1);
}

void PlaylistCommands::Back()
{
    const std::size_t row = m_form.pl.SelectedEntry();
    PlayRow(row > 1 ? row - 1 : m_form.pl.Count());
}

/// With an empty list there is no such row, and only the monitor stops.
void PlaylistCommands::PlayRow(std::size_t row)
{
    m_wmain.tmrBASS.Enabled = false;
    if (m_form.pl.Count() == 0)
        return;
    m_modules.list.DeselectAllEntries();
    m_form.pl.Mark(row);
    m_modules.state.AdvanceRequested = false;
    m_modules.transport.PlaySelected();
}

} // namespace velmo
