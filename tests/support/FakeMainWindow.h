#pragma once

#include "forms/frmListMGR.h"
#include "forms/frmResources.h"
#include "support/FakePlayer.h"
#include "support/SmallFakes.h"
#include "windows/MainWindowEvents.h"
#include "windows/Menus.h"

namespace velmo::test {

class FakeDesktop final : public ports::Desktop
{
public:
    Size VirtualSize() override { return {.width = 19200, .height = 15000}; }
};

class FakeMixerProgram final : public ports::MixerProgram
{
public:
    void Start() override { ++started; }
    int started = 0;
};

/// The main window with its neighbours over a player of fakes, all slots set.
struct FakeMainWindow
{
    explicit FakeMainWindow(FakePlayer& fakes)
        : player(fakes)
    {
        events.Bind();
        menus.Bind();
    }

    FakePlayer& player;
    FakeDesktop desktop;
    FakeMixerProgram mixerProgram;
    std::vector<std::string> trayLog;
    FakeTray tray{trayLog};
    forms::frmResources resources;
    forms::frmListMGR frmListMGR;
    KeyCalls calls;
    int gluings = 0;
    modSystray systray{tray, player.wmain, resources};
    Neighbours neighbours{
        {player.wmain, player.playlist, player.fX, frmListMGR, resources},
        player.settings, [this] {
            ++gluings;
         }
    };
    fX equalizerWindow{player.fX, player.equalizer, player.curves, player.settings};
    wmain window{
        player.wmain,
        player.playlist,
        player.table,
        player.settings,
        desktop,
        player.state,
        player.monitor,
        {player.spectrum, equalizerWindow, player.curves, neighbours, systray}
    };
    MainWindowEvents events{
        {player.wmain,
         resources, window,
         player.table,
         player.state,
         player.transport,
         neighbours, player.spectrum,
         mixerProgram, calls}
    };
    Menus menus{
        {resources,
         player.wmain,
         player.settings,
         window,                neighbours,
         player.spectrum,
         player.transport,
         mixerProgram, calls},
        {&player.wmain, &player.playlist, &player.fX, &frmListMGR, &player.errMGR}
    };
};

} // namespace velmo::test
