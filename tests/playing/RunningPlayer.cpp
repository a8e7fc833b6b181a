#include "RunningPlayer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::test {

namespace {

constexpr std::size_t PieceBytes = std::size_t{16} * 1024; ///< about 20 ms

constexpr controls::MouseEvent Left{.button = controls::MouseButton::Left};

} // namespace

RunningPlayer::RunningPlayer()
{
    const std::string pipe = m_directory("rendered");
    if (::mkfifo(pipe.c_str(), 0600) != 0)
        throw std::runtime_error("no pipe");
    m_pipe = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ::setenv("VELMO_HOME", m_directory().c_str(), 1);
    ::setenv("VELMO_AUDIO", ("wav-fast:" + pipe).c_str(), 1);
    ::setenv("VELMO_WAV_FORMAT", "f32", 1);
    m_bass = OpenBass(m_libraries, BASS_LIBRARY, player.table);
    constexpr DWORD Flags = BASS_DEVICE_3D | BASS_DEVICE_LATENCY;
    if (m_bass.library == nullptr
        || player.table.BASS_Init(-1, static_cast<DWORD>(SampleRate), Flags, nullptr, nullptr) == 0)
        throw std::runtime_error("no engine");
    player.playlist.Show();
}

RunningPlayer::~RunningPlayer()
{
    player.table.BASS_Free();
    ::close(m_pipe);
}

void RunningPlayer::AddRow(const std::string& path)
{
    player.files.files[path] = "";
    player.playlist.pl.Add({.Text = path, .Length = "00:00", .Path = path});
}

void RunningPlayer::Play(const std::function<void()>& afterTick)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(300);
    const ChannelQueries queries(player.table);
    DWORD lastChannel = 0;
    double lastSecond = -1;
    player.transport.imgPlay_MouseUp(Left);
    while (player.wmain.tmrBASS.Enabled) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("it plays on and on");
        Pump(PieceBytes);
        const DWORD channel = player.state.CurrentChannel;
        const DWORD active = player.table.BASS_ChannelIsActive(channel);
        const double second = std::floor(static_cast<double>(queries.ChannelSeconds(channel)));
        const bool sameSecond = channel == lastChannel && second == lastSecond;
        if (active == BASS_ACTIVE_STALLED || (active == BASS_ACTIVE_PLAYING && sameSecond))
            continue;
        lastChannel = channel;
        lastSecond = second;
        const std::size_t startsBefore = Starts();
        player.monitor.MonitorTick();
        if (Starts() != startsBefore)
            AwaitNewSound();
        if (afterTick)
            afterTick();
    }
}

std::vector<Heard> RunningPlayer::HeardOf(const std::vector<double>& pitches)
{
    // The rest of the sound has room there, so that the engine ends without waiting for a reader.
    constexpr int PipeBytes = 1 << 20;
    ::fcntl(m_pipe, F_SETPIPE_SZ, PipeBytes);
    player.table.BASS_Free();
    Drain();
    const std::size_t data = m_rendered.find("data");
    std::vector<float> samples;
    if (data != std::string::npos) {
        samples.resize((m_rendered.size() - data - 8) / sizeof(float));
        std::memcpy(samples.data(), m_rendered.data() + data + 8, samples.size() * sizeof(float));
    }
    return FindTones(samples, SampleRate, pitches);
}

/// What plays goes on while the new track is decoded for the first time, which may take long on a
/// busy machine: at a third of its speed.
void RunningPlayer::AwaitNewSound()
{
    const DWORD next = player.state.NextChannel;
    const bool overlaps = player.table.BASS_ChannelIsActive(next) == BASS_ACTIVE_PLAYING;
    const DWORD channel = overlaps ? next : player.state.CurrentChannel;
    const int pauseMs = overlaps ? 20 : 1;
    while (player.table.BASS_ChannelIsActive(channel) != BASS_ACTIVE_STOPPED
           && player.table.BASS_ChannelGetPosition(channel, 0) == 0) {
        ::poll(nullptr, 0, pauseMs);
        Pump(PieceBytes / 4); // 6 ms of sound
    }
}

/// Reads a piece, or waits for it a little.
void RunningPlayer::Pump(std::size_t bytes)
{
    std::array<char, PieceBytes> piece{};
    pollfd pipe{.fd = m_pipe, .events = POLLIN, .revents = 0};
    constexpr int WaitMs = 2;
    ::poll(&pipe, 1, WaitMs);
    const ssize_t count = ::read(m_pipe, piece.data(), std::min(bytes, piece.size()));
    if (count > 0)
        m_rendered.append(piece.data(), static_cast<std::size_t>(count));
}

void RunningPlayer::Drain()
{
    std::size_t before = 0;
    do {
        before = m_rendered.size();
        Pump(PieceBytes);
    } while (m_rendered.size() != before);
}

} // namespace velmo::test
