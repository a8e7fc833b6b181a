#pragma once

#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {

/// A shown playlist whose rows a test fills, and what sounds.
class SoundTest : public ::testing::Test
{
protected:
    SoundTest() { m_player.playlist.Show(); }

    /// A row whose file can be opened, unless it has no length.
    void AddRow(const std::string& path, double seconds)
    {
        if (seconds > 0)
            m_player.AddSound(path, {.seconds = seconds});
        m_rows.Add({.Text = path, .Length = "", .Path = path});
    }

    /// `seconds` later the monitor ticks, if it is on. What `lblTime` then shows.
    std::string TimeAfter(double seconds)
    {
        m_player.bass.Advance(seconds);
        if (m_wmain.tmrBASS.Enabled)
            m_player.monitor.MonitorTick();
        return m_wmain.lblTime.Caption.Get();
    }

    /// Paths of the channels that play, in the order of their opening.
    std::vector<std::string> Sounding() const
    {
        std::vector<std::string> paths;
        for (const auto& [handle, channel] : m_player.bass.channels)
            if (channel.state == BASS_ACTIVE_PLAYING)
                paths.push_back(channel.path);
        return paths;
    }

    test::FakePlayer m_player;
    forms::wmain& m_wmain = m_player.wmain;
    controls::ListRows& m_rows = m_player.playlist.pl;
    TransportState& m_state = m_player.state;
    Transport& m_transport = m_player.transport;
};

} // namespace velmo
