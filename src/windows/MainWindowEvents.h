#pragma once

#include "wmain.h"

#include "controls/PictureRow.h"
#include "forms/frmResources.h"
#include "ports/MixerProgram.h"
#include "sound/Transport.h"
#include "sound/TransportKeys.h"

#include <vector>

namespace velmo {

/// What the main window's controls work on.
struct MainWindowModules
{
    forms::wmain& form;
    forms::frmResources& menus;
    wmain& window;
    const modBass& bass;
    const TransportState& state;
    Transport& transport;
    Neighbours& neighbours;
    Spectrum& spectrum;
    ports::MixerProgram& mixerProgram;
    const KeyCalls& calls;
};

/// The main window under the mouse: which pictures light up, what presses and releases do, and
/// where its menus open. User-interface thread only.
class MainWindowEvents
{
public:
    explicit MainWindowEvents(MainWindowModules modules);
    MainWindowEvents(const MainWindowEvents&) = delete;
    MainWindowEvents& operator=(const MainWindowEvents&) = delete;
    ~MainWindowEvents() = default;

    /// Sets the mouse slots of the window and all its controls; this must outlive them.
    void Bind();

private:
    using Event = controls::MouseEvent;

    void BindTransport();
    void BindWindowKeys();
    void BindFrame();
    void BindVolume();
    void BindPosition();
    void BindGround();
    void BindDisplay();

    void GroundPressed(const Event& event);
    void GroundMoved();
    void TickerMoved(controls::Image& ticker, bool isDragging);
    void OpenMenu(const controls::Menu& menu, double left = 0, double top = 0) const;
    bool IsChannelActive() const;

    MainWindowModules m_modules;
    forms::wmain& m_form;
    controls::PictureRow m_transportRow;
    controls::PictureRow m_windowRow;
    controls::PictureRow m_others; ///< what belongs to no row, but for the knobs
};

} // namespace velmo
