#pragma once

#include "Effect.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace velmo::engine {

/// The effects of one channel, in the order in which they are run: falling priority, then the order
/// in which they came.
///
/// The chain is changed under the engine's lock, and run by the thread that mixes. What is to be
/// run goes over as a layout, a fixed list, through a mailbox; a layout that the mixer is done with
/// comes back, and is freed with the next change or `Tidy`. So the mixer frees nothing, and finds
/// every effect of its layout alive.
class EffectChain
{
public:
    /// `sampleRate` in Hz of the sound to come.
    explicit EffectChain(std::uint32_t sampleRate) noexcept;
    /// Nothing may be mixed through it any more.
    ~EffectChain();
    EffectChain(const EffectChain&) = delete;
    EffectChain& operator=(const EffectChain&) = delete;

    /// Adds an effect of the kind `table`. Throws std::bad_alloc. Under the engine's lock.
    void Add(const BASS_EFFECT& table, DWORD handle, int priority);
    /// False if there is no such effect. Under the engine's lock.
    bool Remove(DWORD handle);
    /// Null if there is no such effect. Under the engine's lock.
    Effect* Find(DWORD handle) const noexcept;
    /// Frees what is no longer run, if there is any. Under the engine's lock.
    void Tidy() noexcept;

    /// A voice begins: the effects forget what they heard, and what was added or removed since the
    /// last block is so from the first frame on. Mixing thread.
    void Begin() noexcept;
    /// Takes over what has been changed; to be called before a block is run. False if there is
    /// nothing to run. Mixing thread.
    bool Update() noexcept;
    /// Runs the effects over `frames` frames in place. Mixing thread.
    void Process(float* samples, std::size_t frames) noexcept;

private:
    using Effects = std::vector<std::shared_ptr<Effect>>;

    struct Layout
    {
        Effects effects;
        std::vector<float> dry; ///< room for the unchanged sound while an effect is blended
        Layout* next = nullptr;
    };

    void Publish(Effects effects);
    void FreeRetired() noexcept;

    const std::uint32_t m_sampleRate;
    Effects m_effects; ///< guarded by the engine's lock
    std::atomic<Layout*> m_incoming{nullptr};
    std::atomic<Layout*> m_retired{nullptr};
    Layout* m_current = nullptr; ///< of the mixing thread
};

} // namespace velmo::engine
