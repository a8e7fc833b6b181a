#pragma once

#include "RenderedSound.h"

#include "linux/DlLibraries.h"
#include "support/FakePlayer.h"
#include "support/TempDir.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmo::test {

/// The player's logic over the real engine. The engine writes what it renders, as fast as it can,
/// into a pipe that this reads, so that it waits whenever nobody reads: no second of sound passes
/// unseen, however busy the machine is. Where a track starts, it reads slowly until that is heard.
/// The monitor ticks each time the position of what plays passes a whole second.
class RunningPlayer
{
public:
    RunningPlayer();
    RunningPlayer(const RunningPlayer&) = delete;
    RunningPlayer& operator=(const RunningPlayer&) = delete;
    ~RunningPlayer();

    /// A row for a file that lies on the disk.
    void AddRow(const std::string& path);

    /// Presses Play and runs until the monitor is off. `afterTick` may act between two ticks.
    void Play(const std::function<void()>& afterTick = {});

    /// How many tracks were started.
    std::size_t Starts() const { return player.status.told.size(); }

    /// Closes the engine; what it has rendered.
    std::vector<Heard> HeardOf(const std::vector<double>& pitches);

    FakePlayer player;

    static constexpr double SampleRate = 88200;

private:
    void Pump(std::size_t bytes);
    void AwaitNewSound();
    void Drain();

    TempDir m_directory;
    DlLibraries m_libraries;
    BassLibrary m_bass;
    int m_pipe = -1;
    std::string m_rendered;
};

} // namespace velmo::test
