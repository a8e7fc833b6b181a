#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// Which frame of a voice is heard when the output has played a given number of its own frames.
///
/// A voice reaches the output in stretches: a pause or a want of decoded sound parts two of them.
/// The last few stretches are kept, which is enough for what lies between the mixer and the ear.
/// One thread writes; others read at any time and never hold it up: the writer makes the version
/// odd while it writes, a reader reads again if the version was odd or has changed.
class HeardMap
{
public:
    /// The voice's next `frames` frames go to the output's frames from `outFrame` on. The thread
    /// that mixes.
    void Append(std::uint64_t outFrame, std::size_t frames) noexcept;

    /// Frames of the voice that have been heard once the output has played `heardOut`. Any thread.
    std::uint64_t FramesHeard(std::uint64_t heardOut) const noexcept;

    /// The output's frame behind the voice's last one so far; 0 before the first. Any thread.
    std::uint64_t OutEnd() const noexcept { return m_outEnd.load(std::memory_order_acquire); }

private:
    static constexpr std::size_t Kept = 8;

    struct Stretch
    {
        std::atomic<std::uint64_t> outStart{0};
        std::atomic<std::uint64_t> voiceStart{0};
    };

    std::uint64_t Lookup(std::uint64_t heardOut) const noexcept;

    // Every field is stored with release and loaded with acquire: that alone keeps them between the
    // two changes of the version, without fences.
    std::atomic<std::uint32_t> m_version{0};
    std::array<Stretch, Kept> m_stretches;
    std::atomic<std::uint64_t> m_count{0}; ///< stretches begun, the older ones forgotten
    std::atomic<std::uint64_t> m_outEnd{0};
    std::atomic<std::uint64_t> m_voiceEnd{0}; ///< frames of the voice mixed so far
};

} // namespace velmo::engine
