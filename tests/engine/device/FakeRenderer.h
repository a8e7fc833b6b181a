#pragma once

#include "device/DeviceControl.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <limits>
#include <mutex>

namespace velmo::test {

inline constexpr std::chrono::seconds Patience{
    60}; ///< for what shall happen, on however busy a machine

/// Renders a ramp by the number of the frame, so that every frame of the output can be told from
/// its neighbours. Counts what it's asked, and watches that nobody calls while another call runs.
// Final, and never deleted as a Renderer.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class FakeRenderer final : public engine::Renderer
{
public:
    explicit FakeRenderer(std::size_t channels = 2)
        : m_channels(channels)
    {}

    /// Sample of frame `index`: exact in 16 bits, but for full scale itself.
    static float Sample(std::uint64_t index, std::size_t channel)
    {
        const float ramp = static_cast<float>((index + channel) % 65536) / 32768.0f - 1;
        return channel % 2 == 0 ? ramp : -ramp;
    }

    void Render(float* out, std::size_t frames) noexcept override
    {
        const std::lock_guard lock(m_mutex);
        if (m_refusing)
            ++m_lateCalls;
        for (std::size_t i = 0; i < frames; ++i) {
            for (std::size_t channel = 0; channel < m_channels; ++channel)
                out[m_channels * i + channel] = Sample(m_frames + i, channel);
        }
        m_frames += frames;
        m_overrun = m_overrun || m_frames > m_supplied;
        m_changed.notify_all();
    }

    std::size_t FramesReady(std::size_t wanted) noexcept override
    {
        const std::lock_guard lock(m_mutex);
        return static_cast<std::size_t>(std::min<std::uint64_t>(wanted, m_supplied - m_frames));
    }

    void WaitForFrames() noexcept override
    {
        std::unique_lock lock(m_mutex);
        ++m_waits;
        m_changed.notify_all();
        m_supply.wait(lock, [this] { return m_woken || m_supplied > m_frames; });
        m_woken = false;
    }

    void WakeWaiting() noexcept override
    {
        const std::lock_guard lock(m_mutex);
        m_woken = true;
        m_supply.notify_all();
    }

    /// Limits what is ready to `frames` in all, counted from the start.
    void SupplyUpTo(std::uint64_t frames)
    {
        const std::lock_guard lock(m_mutex);
        m_supplied = frames;
        m_supply.notify_all();
    }

    /// From now on a `Render` is a fault.
    void RefuseRenders()
    {
        const std::lock_guard lock(m_mutex);
        m_refusing = true;
    }

    /// Waits until `condition` holds, looking after every block and every few milliseconds.
    bool Await(const std::function<bool()>& condition, std::chrono::milliseconds limit = Patience)
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            std::unique_lock lock(m_mutex);
            if (std::chrono::steady_clock::now() > end)
                return false;
            m_changed.wait_for(lock, std::chrono::milliseconds(2));
        }
        return true;
    }

    bool AwaitFrames(std::uint64_t frames)
    {
        return Await([&] { return Frames() >= frames; });
    }

    /// Waits until nothing has been rendered for a while: longer than any output's block, and than
    /// the time in which a lost stream is tried anew.
    bool AwaitStandstill()
    {
        return Await([this] {
            const std::uint64_t frames = Frames();
            return !Await([&] { return Frames() != frames; }, std::chrono::milliseconds(500));
        });
    }

    [[nodiscard]] std::uint64_t Frames() const { return Get(m_frames); }
    [[nodiscard]] int LateCalls() const { return Get(m_lateCalls); }
    [[nodiscard]] int Waits() const { return Get(m_waits); }
    [[nodiscard]] bool Overrun() const { return Get(m_overrun); }

private:
    template<typename Value>
    Value Get(const Value& value) const
    {
        const std::lock_guard lock(m_mutex);
        return value;
    }

    const std::size_t m_channels;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::condition_variable m_supply;
    std::uint64_t m_frames = 0;
    std::uint64_t m_supplied = std::numeric_limits<std::uint64_t>::max();
    int m_lateCalls = 0;
    int m_waits = 0;
    bool m_woken = false;
    bool m_overrun = false;
    bool m_refusing = false;
};

} // namespace velmo::test
