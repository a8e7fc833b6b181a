#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace velmo::engine {

using SteadyTime = std::chrono::steady_clock::time_point;

/// Whole frames in `time`, rounded down. Exact for any time that a process may live; 0 if negative.
[[nodiscard]] std::uint64_t FramesIn(std::chrono::nanoseconds time, std::uint32_t rate) noexcept;

/// Time that `frames` last, rounded down to the nanosecond. `rate` in Hz, above 0.
[[nodiscard]] std::chrono::nanoseconds TimeOf(std::uint64_t frames, std::uint32_t rate) noexcept;

/// Counts frames rendered and tells frames heard. One output at a time writes, on one thread at a
/// time; any thread reads, and neither side ever waits for a lock.
class DeviceClock
{
public:
    /// Starts anew at frame 0, standing. No output may be open. `rate` in Hz.
    void Reset(std::uint32_t rate) noexcept;

    [[nodiscard]] std::uint32_t Rate() const noexcept;

    /// Called by the gate when a block has been rendered.
    void AddRendered(std::uint64_t frames) noexcept;
    [[nodiscard]] std::uint64_t Rendered() const noexcept;

    /// Frame `frame` is heard at `at`, and the following ones after it at the clock's rate.
    void Run(std::uint64_t frame, SteadyTime at) noexcept;

    /// Everything up to `frame` has been heard, and nothing more is heard until told otherwise.
    void Stand(std::uint64_t frame) noexcept;

    /// From now on a frame counts as heard as soon as it is rendered.
    void FollowRendered() noexcept;

    /// Notes how many frames rendering is ahead of hearing while the output runs. The output's or
    /// the device's thread.
    void SetLatency(std::uint64_t frames) noexcept;
    /// The latest note, kept while the output stands still; 0 before the first.
    [[nodiscard]] std::uint64_t Latency() const noexcept;

    /// Frames heard at `now`: never above `Rendered`, never below what any call gave before.
    [[nodiscard]] std::uint64_t Heard(SteadyTime now) const noexcept;

private:
    struct Snapshot
    {
        std::uint64_t frame = 0;
        std::int64_t timeNs = 0;   ///< of the steady clock
        std::uint64_t running = 0; ///< 0 or 1
    };

    void Publish(const Snapshot& snapshot) noexcept;
    [[nodiscard]] Snapshot Read() const noexcept;

    std::atomic<std::uint32_t> m_rate{44100};
    std::atomic<std::uint64_t> m_rendered{0};
    std::atomic<std::uint64_t> m_latency{0};
    std::atomic<std::uint32_t> m_sequence{0};
    std::atomic<std::uint64_t> m_frame{0};
    std::atomic<std::int64_t> m_timeNs{0};
    std::atomic<std::uint64_t> m_running{0};
    mutable std::atomic<std::uint64_t> m_highest{0}; ///< largest answer of `Heard` so far
};

} // namespace velmo::engine
