#pragma once

#include "EqualizerBands.h"
#include "EqualizerFiles.h"
#include "modFXFunctions.h"

#include "controls/PictureRow.h"
#include "core/modINI.h"
#include "forms/fX.h"

#include <functional>

namespace velmo {

/// What the equalizer's window needs of the layers above it. Bound by the object graph before the
/// first event; what is not bound does nothing.
struct EqualizerCalls
{
    /// The channel that plays, 0 if none does.
    std::function<DWORD()> CurrentChannel;
    /// The window's load: its outline from its picture, and its place among the sticky windows.
    std::function<void()> ShapeAndStick;
    /// Hides the window, for this run and the next ones.
    std::function<void()> Hide;
};

/// What happens to the equalizer's window. No failure is reported: an effect call that fails is
/// passed over. User-interface thread only.
class fX final
{
public:
    /// Sets the slots of the form, which must not be used after the end of this.
    fX(forms::fX& form, modFXFunctions& equalizer, EqualizerFiles& curves, modINI& settings);
    fX(const fX&) = delete;
    fX& operator=(const fX&) = delete;
    ~fX() = default;

    /// Makes the curve flat, as a window that has just been made has it. Does nothing on a window
    /// that is loaded.
    void Load();

    /// Takes over whether the equalizer is on from the settings.
    void ReadState();

    EqualizerCalls Calls;

private:
    void BindKeys();
    void BindWindow();
    void btnState_MouseUp();
    void btnReset_MouseUp();
    void imgCaptionClose_MouseUp(const controls::MouseEvent& event) const;
    void SwitchTo(bool on);
    void ShowNormal() const;
    DWORD Channel() const;

    forms::fX& m_form;
    modFXFunctions& m_equalizer;
    EqualizerFiles& m_curves;
    modINI& m_settings;
    EqualizerBands m_bands;
    controls::PictureRow m_keys;
    controls::PictureRow m_caption;
};

} // namespace velmo
