#include "Menus.h"

#include "core/SettingsKeys.h"

#include <utility>

namespace velmo {

namespace {

void Enable(const std::vector<controls::MenuEntry*>& entries)
{
    for (controls::MenuEntry* entry : entries) {
        entry->Enabled = entry->Click || !entry->Children.empty() || entry->IsSeparator();
        Enable(entry->Children);
    }
}

} // namespace

Menus::Menus(MenuModules modules, std::vector<controls::Form*> windows)
    : m_modules(modules)
    , m_windows(std::move(windows))
{}

void Menus::Bind()
{
    BindMainMenu();
    BindComponents();
    BindSmallMenus();
}

void Menus::BindMainMenu()
{
    forms::frmResources& menus = m_modules.menus;
    menus.submnuAbout.Click = m_modules.calls.ShowAbout;
    menus.submnuPlayFile.Click = [this] { m_modules.transport.OpenAndPlayDialog(); };
    menus.submnuOpenList.Click = m_modules.calls.OpenListDialog;
    menus.submnuAddFiles.Click = m_modules.calls.AddFilesDialog;
    menus.submnuSaveList.Click = m_modules.calls.SaveListDialog;
    menus.submnuAlwaysOnTop.Click = [this] { submnuAlwaysOnTop_Click(); };
    menus.submnuShutDown.Click = m_modules.calls.ShowShutDown;
    menus.submnuRestart.Click = m_modules.calls.RestartCore;
    menus.submnuExit.Click = m_modules.calls.ExitProgram;
}

void Menus::BindComponents()
{
    forms::frmResources& menus = m_modules.menus;
    menus.submnuShowEq.Click = [this] { m_modules.neighbours.ToggleEqualizer(); };
    menus.submnuShowPlaylist.Click = [this] { m_modules.neighbours.TogglePlaylist(); };
    menus.submnuShowPlaylistManager.Click = [this] { m_modules.neighbours.ToggleListManager(); };
    menus.submnuControlCenter.Click = m_modules.calls.ShowOptions;
    menus.submnuDjingOptions.Click = m_modules.calls.ShowDj;
    menus.submnuSystemVolume.Click = [this] { m_modules.mixerProgram.Start(); };
    menus.submnuStreamInformation.Click = m_modules.calls.ShowSinfo;
}

void Menus::BindSmallMenus()
{
    forms::frmResources& menus = m_modules.menus;
    menus.submnuFind.Click = m_modules.calls.ShowFinder;
    menus.submnuEntryInformation.Click = m_modules.calls.ShowEntryInfo;
    menus.submnuTimeMode.Click = [this] { m_modules.window.FlipTimeMode(); };
    menus.submnuSpectrumMode.Click = [this] { m_modules.spectrum.CycleView(); };
    menus.submnuVolControl.Click = [this] { m_modules.mixerProgram.Start(); };
    menus.STMin.Click = [this] { m_modules.form.State = controls::WindowState::Minimized; };
    menus.STMax.Click = [this] { m_modules.form.State = controls::WindowState::Normal; };
    menus.STClose.Click = m_modules.calls.STClose;
}

void Menus::submnuAlwaysOnTop_Click()
{
    const bool isOnTop = !m_modules.menus.submnuAlwaysOnTop.Checked;
    m_modules.menus.submnuAlwaysOnTop.Checked = isOnTop;
    m_modules.settings.WriteSetting(
        sections::Options, keys::AlwaysOnTop, isOnTop ? "True" : "False");
    for (controls::Form* window : m_windows)
        if (window->Loaded || window->Visible)
            window->AlwaysOnTop = isOnTop;
}

void EnableBoundEntries(const forms::frmResources& menus)
{
    for (const controls::Menu* menu :
         {&menus.Menu1, &menus.Menu2, &menus.Menu3, &menus.Menu4, &menus.Menu5, &menus.Menu6})
        Enable(menu->Entries);
}

} // namespace velmo
