// The snapshot is guarded by a sequence number: odd while the writer changes it, and different
// afterwards. A reader takes the fields between two looks at the number and starts again if they
// differ. The fields are atomics that are stored with release and loaded with acquire order, which
// keeps the first look in front of them and the second behind without any fence.

#include "DeviceClock.h"

#include <algorithm>
#include <limits>

namespace velmo::engine {

namespace {

constexpr std::uint64_t NsPerSecond = 1'000'000'000;

} // namespace

std::uint64_t FramesIn(std::chrono::nanoseconds time, std::uint32_t rate) noexcept
{
    if (time.count() <= 0)
        return 0;
    const auto ns = static_cast<std::uint64_t>(time.count());
    return ns / NsPerSecond * rate + ns % NsPerSecond * rate / NsPerSecond;
}

std::chrono::nanoseconds TimeOf(std::uint64_t frames, std::uint32_t rate) noexcept
{
    const std::uint64_t ns = frames / rate * NsPerSecond + frames % rate * NsPerSecond / rate;
    return std::chrono::nanoseconds(static_cast<std::int64_t>(ns));
}

void DeviceClock::Reset(std::uint32_t rate) noexcept
{
    m_rate.store(rate);
    m_rendered.store(0);
    m_latency.store(0);
    Publish({});
    m_highest.store(0);
}

std::uint32_t DeviceClock::Rate() const noexcept
{
    return m_rate.load(std::memory_order_relaxed);
}

void DeviceClock::AddRendered(std::uint64_t frames) noexcept
{
    m_rendered.fetch_add(frames, std::memory_order_release);
}

std::uint64_t DeviceClock::Rendered() const noexcept
{
    return m_rendered.load(std::memory_order_acquire);
}

void DeviceClock::Run(std::uint64_t frame, SteadyTime at) noexcept
{
    const std::chrono::nanoseconds time = at.time_since_epoch();
    Publish({.frame = frame, .timeNs = time.count(), .running = 1});
}

void DeviceClock::Stand(std::uint64_t frame) noexcept
{
    Publish({.frame = frame});
}

void DeviceClock::FollowRendered() noexcept
{
    Publish({.frame = std::numeric_limits<std::uint64_t>::max()});
}

void DeviceClock::SetLatency(std::uint64_t frames) noexcept
{
    m_latency.store(frames, std::memory_order_relaxed);
}

std::uint64_t DeviceClock::Latency() const noexcept
{
    return m_latency.load(std::memory_order_relaxed);
}

std::uint64_t DeviceClock::Heard(SteadyTime now) const noexcept
{
    const Snapshot snapshot = Read();
    std::uint64_t heard = snapshot.frame;
    if (snapshot.running != 0)
        heard +=
            FramesIn(now.time_since_epoch() - std::chrono::nanoseconds(snapshot.timeNs), Rate());
    heard = std::min(heard, Rendered());
    std::uint64_t highest = m_highest.load(std::memory_order_acquire);
    while (highest < heard
           && !m_highest.compare_exchange_weak(highest, heard, std::memory_order_acq_rel)) {}
    return std::max(highest, heard);
}

void DeviceClock::Publish(const Snapshot& snapshot) noexcept
{
    const std::uint32_t sequence = m_sequence.load(std::memory_order_relaxed);
    m_sequence.store(sequence + 1, std::memory_order_relaxed);
    m_frame.store(snapshot.frame, std::memory_order_release);
    m_timeNs.store(snapshot.timeNs, std::memory_order_release);
    m_running.store(snapshot.running, std::memory_order_release);
    m_sequence.store(sequence + 2, std::memory_order_release);
}

DeviceClock::Snapshot DeviceClock::Read() const noexcept
{
    for (;;) {
        const std::uint32_t before = m_sequence.load(std::memory_order_acquire);
        const Snapshot snapshot{.frame = m_frame.load(std::memory_order_acquire),
                                .timeNs = m_timeNs.load(std::memory_order_acquire),
                                .running = m_running.load(std::memory_order_acquire)};
        if (before % 2 == 0 && m_sequence.load(std::memory_order_relaxed) == before)
            return snapshot;
    }
}

} // namespace velmo::engine
