#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>

#include <pthread.h>

namespace velmo::engine {

/// Processor time against time, over about the last second of a row of readings.
class CpuWindow
{
public:
    /// Takes a reading at `now` of processor time used so far, both from any zero. Gives per cent
    /// of one core since the oldest reading that's kept; 0 for the first after a break. Readings
    /// nearer to the last one than a fifth of a second are to be left out: see `IsDue`.
    float Add(std::chrono::nanoseconds now, std::chrono::nanoseconds used) noexcept;

    [[nodiscard]] bool IsDue(std::chrono::nanoseconds now) const noexcept;

    void Clear() noexcept { m_count = 0; }

private:
    struct Reading
    {
        std::chrono::nanoseconds time{0};
        std::chrono::nanoseconds used{0};
    };
    static constexpr std::size_t Kept = 6;

    [[nodiscard]] const Reading& Newest() const noexcept { return m_readings[m_count - 1]; }

    std::array<Reading, Kept> m_readings; ///< the oldest first
    std::size_t m_count = 0;
};

/// Processor time of the decoding and the mixing thread. The mixing thread reads both clocks some
/// times a second while it renders; who asks gets the last result, and never waits.
class CpuMeter
{
public:
    /// The calling thread is the one that decodes.
    void SetDecoder() noexcept;

    /// To be called for each block, on the thread that mixes; that may be another one after a time.
    void BlockRendered() noexcept;

    /// Per cent of one core; 0 if no block came for a second. Any thread.
    [[nodiscard]] float Percent() const noexcept;

private:
    static constexpr clockid_t NoClock = -1;

    std::atomic<clockid_t> m_decoder{NoClock};
    /// The time of the last result in ms, and the bits of the result as a float below it.
    std::atomic<std::uint64_t> m_result{0};
    // The mixing thread's own.
    pthread_t m_mixer{};
    CpuWindow m_window;
};

} // namespace velmo::engine
