#include "MainWindowEvents.h"

#include "core/CallIfSet.h"

namespace velmo {

namespace {

using controls::MouseButton;
using controls::PressedBy;

bool IsRight(const controls::MouseEvent& event)
{
    return event.button == MouseButton::Right;
}

bool IsLeft(const controls::MouseEvent& event)
{
    return event.button == MouseButton::Left;
}

} // namespace

MainWindowEvents::MainWindowEvents(MainWindowModules modules)
    : m_modules(modules)
    , m_form(modules.form)
    , m_transportRow({&m_form.imgBack,
                      &m_form.imgPlay,
                      &m_form.imgPause,
                      &m_form.imgStop,
                      &m_form.imgOpen,
                      &m_form.imgNext,
                      &m_form.imgK})
    , m_windowRow({&m_form.imgShowPL,
                   &m_form.imgShowListMgr,
                   &m_form.imgShowDJ,
                   &m_form.imgShowFX,
                   &m_form.imgShowOptions})
    , m_others({&m_form.imgClose,
                &m_form.imgControl,
                &m_form.imgMinimize,
                &m_form.imgSoundVolume,
                &m_form.imgVolumeBar})
{}

void MainWindowEvents::Bind()
{
    BindTransport();
    BindWindowKeys();
    BindFrame();
    BindVolume();
    BindPosition();
    BindGround();
    BindDisplay();
}

void MainWindowEvents::BindTransport()
{
    forms::wmain& form = m_form;
    Transport& transport = m_modules.transport;
    const auto bind = [&](controls::Image& image, void (Transport::*act)(const Event&)) {
        m_transportRow.Bind(
            image, {.act = [&transport, act](const Event& event) { (transport.*act)(event); }});
    };
    bind(form.imgBack, &Transport::imgBack_MouseUp);
    bind(form.imgPlay, &Transport::imgPlay_MouseUp);
    bind(form.imgStop, &Transport::imgStop_MouseUp);
    bind(form.imgNext, &Transport::imgNext_MouseUp);
    m_transportRow.Bind(
        form.imgPause,
        {.isPressable = [this] { return IsChannelActive(); },
         .hovered =
             [this](const Event&) {
                 m_form.imgPause.ToolTipText = m_modules.state.PausedFlag ? "Resume" : "Pause";
             },
         .act = [&transport](const Event& event) { transport.imgPause_MouseUp(event); }});
    // Kept: released, it shows the normal picture of its neighbour.
    m_transportRow.Bind(
        form.imgOpen,
        {.released = form.imgNext.States.normal,
         .act = [&transport](const Event& event) { transport.imgOpen_MouseUp(event); }});
    m_transportRow.Bind(form.imgK,
                        {.act = [this](const Event&) { CallIfSet(m_modules.calls.ShowAbout); }});
}

void MainWindowEvents::BindWindowKeys()
{
    const auto byAnyButton = [this](controls::Image& image, std::function<void()> act) {
        m_windowRow.Bind(image,
                         {.pressedBy = PressedBy::AnyButton,
                          .act = [act = std::move(act)](const Event&) { act(); }});
    };
    byAnyButton(m_form.imgShowPL, [this] { m_modules.neighbours.TogglePlaylist(); });
    byAnyButton(m_form.imgShowFX, [this] { m_modules.neighbours.ToggleEqualizer(); });
    byAnyButton(m_form.imgShowDJ, [this] { CallIfSet(m_modules.calls.ShowDj); });
    byAnyButton(m_form.imgShowOptions, [this] { CallIfSet(m_modules.calls.ShowOptions); });
    m_windowRow.Bind(m_form.imgShowListMgr, {.act = [this](const Event& event) {
                         if (IsLeft(event))
                             m_modules.neighbours.ToggleListManager();
                     }});
}

void MainWindowEvents::BindFrame()
{
    const controls::PictureRow alone({});
    alone.Bind(m_form.imgClose, {.act = [this](const Event& event) {
                   if (ReleasedInside(m_form.imgClose, event))
                       CallIfSet(m_modules.calls.ExitProgram);
               }});
    alone.Bind(m_form.imgMinimize, {.act = [this](const Event& event) {
                   m_modules.window.imgMinimize_MouseUp(event);
               }});
    alone.Bind(m_form.imgControl, {.act = [this](const Event& event) {
                   if (IsLeft(event))
                       OpenMenu(m_modules.menus.Menu1);
               }});
}

void MainWindowEvents::BindVolume()
{
    const controls::PictureRow alone({});
    VolumeSlider& volume = m_modules.window.Volume();
    const auto openMenu = [this](const Event& event) {
        if (IsRight(event))
            OpenMenu(m_modules.menus.Menu4);
    };
    alone.Bind(m_form.imgSoundVolume, {.act = [this, openMenu](const Event& event) {
                   if (IsLeft(event))
                       m_modules.mixerProgram.Start();
                   openMenu(event);
               }});
    alone.Bind(m_form.imgVolumeBar,
               {.pressed = [&volume](const Event& event) { volume.imgVolumeBar_MouseDown(event); },
                .act = openMenu});
    m_form.imgVolumeBar.MouseMove = [this, &volume](const Event&) {
        if (volume.IsDragging())
            return;
        m_form.imgVolumeBar.ShowHover();
        m_form.imgVolumeTicker.ShowNormal();
        m_form.imgSoundVolume.ShowNormal();
    };
    alone.Bind(
        m_form.imgVolumeTicker,
        {.pressed = [&volume](const Event& event) { volume.imgVolumeTicker_MouseDown(event); },
         .act =
             [&volume, openMenu](const Event& event) {
                 volume.imgVolumeTicker_MouseUp(event);
                 openMenu(event);
             }});
    m_form.imgVolumeTicker.MouseMove = [this, &volume](const Event& event) {
        TickerMoved(m_form.imgVolumeTicker, volume.IsDragging());
        volume.imgVolumeTicker_MouseMove(event);
    };
}

void MainWindowEvents::BindPosition()
{
    const controls::PictureRow alone({});
    PositionSlider& position = m_modules.window.Position();
    const auto openMenu = [this](const Event& event) {
        if (IsRight(event))
            OpenMenu(m_modules.menus.Menu1);
    };
    m_form.imgPositionBar.MouseDown = [&position](const Event& event) {
        position.imgPositionBar_MouseDown(event);
    };
    m_form.imgPositionBar.MouseMove = [this, &position](const Event&) {
        TickerMoved(m_form.imgPositionTicker, position.IsDragging());
    };
    m_form.imgPositionBar.MouseUp = openMenu;
    alone.Bind(m_form.imgPositionTicker,
               {.pressed = [&position](
                               const Event& event) { position.imgPositionTicker_MouseDown(event); },
                .act =
                    [&position, openMenu](const Event& event) {
                        position.imgPositionTicker_MouseUp(event);
                        openMenu(event);
                    }});
    m_form.imgPositionTicker.MouseMove = [this, &position](const Event& event) {
        TickerMoved(m_form.imgPositionTicker, position.IsDragging());
        position.imgPositionTicker_MouseMove(event);
    };
}

void MainWindowEvents::BindGround()
{
    const auto bind = [this](auto& ground) {
        ground.MouseDown = [this](const Event& event) { GroundPressed(event); };
        ground.MouseMove = [this](const Event&) { GroundMoved(); };
        ground.MouseUp = [this](const Event& event) {
            if (IsRight(event))
                OpenMenu(m_modules.menus.Menu1);
        };
    };
    bind(m_form);
    bind(m_form.lblBlackBG1);
    bind(m_form.lblBlackBG2);
    bind(m_form.lblSongName);
}

/// What stands on the ground of the right half lies beside the volume's key alone.
void MainWindowEvents::BindDisplay()
{
    const auto darkenKey = [this](const Event&) { m_form.imgSoundVolume.ShowNormal(); };
    m_form.lblSongName.MouseMove = darkenKey;
    m_form.lblTime.MouseMove = darkenKey;
    m_form.picVisualisation.MouseMove = darkenKey;
    m_form.lblTime.MouseDown = [this](const Event& event) {
        m_modules.window.lblTime_MouseDown(event);
        GroundPressed(event);
    };
    m_form.lblTime.MouseUp = [this](const Event& event) {
        if (IsRight(event))
            OpenMenu(m_modules.menus.Menu3);
    };
    m_form.picVisualisation.MouseUp = [this](const Event& event) {
        m_modules.spectrum.picVisualisation_MouseUp(event);
        if (IsRight(event))
            OpenMenu(
                m_modules.menus.Menu3, m_form.picVisualisation.Left, m_form.picVisualisation.Top);
    };
}

void MainWindowEvents::GroundPressed(const Event& event)
{
    if (IsLeft(event))
        CallIfSet(m_form.BeginDrag);
}

void MainWindowEvents::GroundMoved()
{
    m_transportRow.ShowNormal();
    m_windowRow.ShowNormal();
    m_others.ShowNormal();
    if (!m_modules.window.Volume().IsDragging())
        m_form.imgVolumeTicker.ShowNormal();
    if (!m_modules.window.Position().IsDragging())
        m_form.imgPositionTicker.ShowNormal();
}

/// A knob that is dragged stays pressed.
void MainWindowEvents::TickerMoved(controls::Image& ticker, bool isDragging)
{
    if (!isDragging)
        ticker.ShowHover();
}

/// At the window's upper left corner, or as far from it as a box stands.
void MainWindowEvents::OpenMenu(const controls::Menu& menu, double left, double top) const
{
    CallIfSet(menu.PopUp, m_form.Left + left, m_form.Top + top);
}

bool MainWindowEvents::IsChannelActive() const
{
    return m_modules.bass.BASS_ChannelIsActive(m_modules.state.CurrentChannel)
           != BASS_ACTIVE_STOPPED;
}

} // namespace velmo
