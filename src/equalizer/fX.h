#pragma once

#include "modFXFunctions.h"

#include "core/modINI.h"
#include "forms/fX.h"

namespace velmo {

/// What happens to the equalizer's window. User-interface thread only.
class fX final
{
public:
    fX(forms::fX& form, modFXFunctions& equalizer, modINI& settings);

    /// Makes the curve flat, as a window that has just been made has it. Does nothing on a window
    /// that is loaded.
    void Load();

    /// Takes over whether the equalizer is on from the settings.
    void ReadState();

private:
    forms::fX& m_form;
    modFXFunctions& m_equalizer;
    modINI& m_settings;
};

} // namespace velmo
