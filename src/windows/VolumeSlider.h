#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/wmain.h"

#include <cstdint>
#include <string>

namespace velmo {

/// The volume slider of the main window. The setting "Volume" is the distance in twips from the
/// start of the bar to the middle of the knob; the knob's way is 1200 twips, 12 to the per cent.
/// User-interface thread only.
class VolumeSlider
{
public:
    VolumeSlider(forms::wmain& form, const modBass& bass, modINI& settings);

    /// At the window's load: knob, volume and tool tips from the setting.
    void Restore();

    bool IsDragging() const { return m_dragging; }

    void imgVolumeBar_MouseDown(const controls::MouseEvent& event);
    void imgVolumeTicker_MouseDown(const controls::MouseEvent& event);
    void imgVolumeTicker_MouseMove(const controls::MouseEvent& event);
    void imgVolumeTicker_MouseUp(const controls::MouseEvent& event);

private:
    double Range() const;
    double Step() const;
    double Offset() const;
    void MoveTo(double left);
    void SetVolume(double offset);
    void ShowPercent(const std::string& number);
    void Write();

    forms::wmain& m_form;
    const modBass& m_bass;
    modINI& m_settings;
    bool m_dragging = false;
    std::int32_t m_dragStart = 0;
};

} // namespace velmo
