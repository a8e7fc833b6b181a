#pragma once

#include "wmain.h"

#include "forms/frmResources.h"
#include "ports/MixerProgram.h"
#include "sound/Transport.h"
#include "sound/TransportKeys.h"

#include <vector>

namespace velmo {

/// What the entries of the menus work on.
struct MenuModules
{
    forms::frmResources& menus;
    forms::wmain& form;
    modINI& settings;
    wmain& window;
    Neighbours& neighbours;
    Spectrum& spectrum;
    Transport& transport;
    ports::MixerProgram& mixerProgram;
    const KeyCalls& calls;
};

/// What the entries of the menus do, but for those that work on the rows of a list. User-interface
/// thread only.
class Menus
{
public:
    /// `windows` are all that stay on top when that is chosen.
    Menus(MenuModules modules, std::vector<controls::Form*> windows);
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;
    ~Menus() = default;

    /// Sets the entries' slots; this must outlive them. An entry whose call is not bound gets none.
    void Bind();

    /// Flips its mark, the setting and the windows that are loaded.
    void submnuAlwaysOnTop_Click();

private:
    void BindMainMenu();
    void BindComponents();
    void BindSmallMenus();

    MenuModules m_modules;
    std::vector<controls::Form*> m_windows;
};

/// Only an entry that does something can be chosen. Called once all slots are set; from then on the
/// state of an entry is a matter of its menu.
void EnableBoundEntries(const forms::frmResources& menus);

} // namespace velmo
