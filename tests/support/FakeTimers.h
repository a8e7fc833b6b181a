#pragma once

#include "ports/Timers.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmo::test {

/// Timers that tick when the test moves the clock. Tickers must not outlive this.
class FakeTimers final : public ports::Timers
{
public:
    [[nodiscard]] std::unique_ptr<Ticker> Create(ports::TimerPrecision,
                                                 std::function<void()> tick) override
    {
        return std::make_unique<FakeTicker>(*this, std::move(tick));
    }

    /// Moves the clock on; all ticks that fall due come in the order of their times.
    void Advance(std::int64_t milliseconds)
    {
        const std::int64_t end = m_nowMs + milliseconds;
        for (FakeTicker* next = Next(end); next != nullptr; next = Next(end)) {
            m_nowMs = next->dueMs;
            next->dueMs += next->intervalMs;
            const std::function<void()> tick = next->tick; // the tick may destroy its ticker
            tick();
        }
        m_nowMs = end;
    }

private:
    struct FakeTicker final : Ticker
    {
        FakeTicker(FakeTimers& owner, std::function<void()> onTick)
            : timers(owner)
            , tick(std::move(onTick))
        {
            timers.m_tickers.push_back(this);
        }

        ~FakeTicker() override { std::erase(timers.m_tickers, this); }

        FakeTicker(const FakeTicker&) = delete;
        FakeTicker& operator=(const FakeTicker&) = delete;

        void Start(int interval) override
        {
            intervalMs = interval;
            dueMs = timers.m_nowMs + interval;
        }

        void Stop() override { intervalMs = 0; }

        FakeTimers& timers;
        std::function<void()> tick;
        std::int64_t intervalMs = 0; ///< 0 while stopped
        std::int64_t dueMs = 0;
    };

    /// The running ticker that is due first, not after `end`.
    FakeTicker* Next(std::int64_t end)
    {
        FakeTicker* next = nullptr;
        for (FakeTicker* ticker : m_tickers)
            if (ticker->intervalMs > 0 && ticker->dueMs <= end
                && (next == nullptr || ticker->dueMs < next->dueMs))
                next = ticker;
        return next;
    }

    std::vector<FakeTicker*> m_tickers;
    std::int64_t m_nowMs = 0;
};

} // namespace velmo::test
