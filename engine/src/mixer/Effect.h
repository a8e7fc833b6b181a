#pragma once

#include "Fade.h"
#include "bass_effect.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

namespace velmo::engine {

/// One effect on a channel: what an add-on has made, and how much of it is heard.
///
/// An effect that is added to or taken off sound that is being heard is blended with the unchanged
/// sound over some milliseconds. Between two voices, and before the first, it's there or not from
/// one frame to the next.
class Effect
{
public:
    /// Throws std::bad_alloc where the add-on makes none. `sampleRate` in Hz.
    Effect(const BASS_EFFECT& table, std::uint32_t sampleRate, DWORD handle, int priority);
    ~Effect();
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    DWORD Handle() const noexcept { return m_handle; }
    int Priority() const noexcept { return m_priority; }

    /// Codes of `BASS_ErrorGetCode`. Under the engine's lock.
    int Set(const void* record) noexcept { return m_table.set(m_effect, record); }
    int Get(void* record) noexcept { return m_table.get(m_effect, record); }

    /// It's to go. Under the engine's lock.
    void Leave() noexcept;
    bool Leaving() const noexcept { return m_leaving.load(std::memory_order_relaxed); }
    /// It has gone and is not run again. Any thread.
    bool Gone() const noexcept { return m_stage.load(std::memory_order_acquire) == Stage::Gone; }

    /// Forgets the sound so far; what was added or is to go is so without a blend. Mixing thread.
    void Begin() noexcept;
    /// Changes `frames` frames in place. `dry` is room for some frames. Mixing thread.
    void Process(float* samples, std::size_t frames, std::span<float> dry) noexcept;

private:
    enum class Stage
    {
        Added, ///< the mixer has not run it yet
        Run,
        Gone,
    };

    bool Enter() noexcept;

    const BASS_EFFECT& m_table;
    void* const m_effect;
    const DWORD m_handle;
    const int m_priority;
    std::atomic<bool> m_leaving{false};
    std::atomic<Stage> m_stage{Stage::Added};
    Fade m_wet; ///< of the mixing thread
};

} // namespace velmo::engine
