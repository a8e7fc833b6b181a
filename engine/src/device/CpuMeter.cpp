#include "CpuMeter.h"

#include <algorithm>
#include <bit>

namespace velmo::engine {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr milliseconds Spacing{200};
constexpr milliseconds Break{1000};
constexpr unsigned TimeShift = 32;

/// 0 if there's no such clock, or its thread has ended.
nanoseconds ReadClock(clockid_t clock) noexcept
{
    timespec time{};
    if (clock_gettime(clock, &time) != 0)
        return {};
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

/// Wraps after seven weeks, which differences bear.
std::uint32_t Milliseconds(nanoseconds time) noexcept
{
    return static_cast<std::uint32_t>(std::chrono::floor<milliseconds>(time).count());
}

} // namespace

bool CpuWindow::IsDue(nanoseconds now) const noexcept
{
    return m_count == 0 || now - Newest().time >= Spacing;
}

float CpuWindow::Add(nanoseconds now, nanoseconds used) noexcept
{
    if (m_count > 0 && now - Newest().time > Break)
        Clear();
    if (m_count == Kept)
        std::shift_left(m_readings.begin(), m_readings.end(), 1);
    else
        ++m_count;
    m_readings[m_count - 1] = {.time = now, .used = used};
    const Reading& oldest = m_readings.front();
    if (now <= oldest.time || used <= oldest.used)
        return 0;
    return 100.0f * static_cast<float>((used - oldest.used).count())
           / static_cast<float>((now - oldest.time).count());
}

void CpuMeter::SetDecoder() noexcept
{
    clockid_t clock = NoClock;
    if (pthread_getcpuclockid(pthread_self(), &clock) == 0)
        m_decoder.store(clock);
}

void CpuMeter::BlockRendered() noexcept
{
    if (const pthread_t self = pthread_self(); pthread_equal(self, m_mixer) == 0) {
        m_mixer = self;
        m_window.Clear();
    }
    const nanoseconds now = ReadClock(CLOCK_MONOTONIC_COARSE);
    if (!m_window.IsDue(now))
        return;
    const nanoseconds used = ReadClock(CLOCK_THREAD_CPUTIME_ID) + ReadClock(m_decoder.load());
    const float percent = m_window.Add(now, used);
    m_result.store(std::uint64_t{Milliseconds(now)} << TimeShift
                   | std::bit_cast<std::uint32_t>(percent));
}

float CpuMeter::Percent() const noexcept
{
    const std::uint64_t result = m_result.load();
    const auto time = static_cast<std::uint32_t>(result >> TimeShift);
    const std::uint32_t age = Milliseconds(ReadClock(CLOCK_MONOTONIC_COARSE)) - time;
    if (result == 0 || age > static_cast<std::uint32_t>(Break.count()))
        return 0;
    return std::bit_cast<float>(static_cast<std::uint32_t>(result));
}

} // namespace velmo::engine
