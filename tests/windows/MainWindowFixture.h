#pragma once

#include "support/FakeMainWindow.h"
#include "support/Mouse.h"

#include <gmock/gmock.h>

namespace velmo::test {

/// The main window over a player of fakes, which can open a file of 100 seconds.
class MainWindowFixture : public ::testing::Test
{
protected:
    MainWindowFixture() { m_player.AddSound("/m/a.mp3", {.seconds = 100}); }

    FakePlayer m_player;
    forms::wmain& m_form = m_player.wmain;
    FakeMainWindow m_fakes{m_player};
    forms::frmResources& m_menus = m_fakes.resources;
};

} // namespace velmo::test
