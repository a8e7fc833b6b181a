/// The delay lines of the reverb.
#pragma once

#include "ReverbDesign.h"
#include "SmoothRamp.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmo::engine {

/// A feedback delay network: each side of the send goes through a delay and a row of Schroeder
/// all-passes, then into every other of eight lines, whose outputs are damped, mixed by a Hadamard
/// matrix, which keeps their energy, and led back. Only the constructor allocates.
class ReverbNetwork
{
public:
    /// Memory for any design at the rate.
    explicit ReverbNetwork(std::uint32_t sampleRate);

    /// Begins anew, empty, and deaf to the send until `FadeSend`.
    void Start(const ReverbDesign& design) noexcept;

    /// Is led to another tuning, in `frames` frames. Not while it `IsRetuning`.
    void Retune(const ReverbDesign::Tuning& tuning, std::size_t frames) noexcept;

    bool IsRetuning() const noexcept { return m_toGoal.IsMoving(); }

    /// Leads the share of the send that is let in to `share`, in `frames` frames: its sudden
    /// beginning or end would come out as a click, after the delays.
    void FadeSend(float share, std::size_t frames) noexcept { m_intake.Start(share, frames); }

    const ReverbDesign::Delays& Delays() const noexcept { return m_delays; }

    /// Writes the reverberation of `send` (null: silence) to `wet`, both `frames` stereo frames.
    /// Returns a bound of the sound that has been put in or led back, as it would come out.
    float Process(const float* send, float* wet, std::size_t frames) noexcept;

private:
    /// A ring in the network's memory.
    struct Line
    {
        float* samples = nullptr;
        std::uint32_t length = 1;
        std::uint32_t position = 0;

        /// What went in `length` calls ago.
        float Oldest() const noexcept { return samples[position]; }

        void Replace(float sample) noexcept
        {
            samples[position] = sample;
            position = position + 1 == length ? 0 : position + 1;
        }
    };

    using Frame = std::array<float, ReverbDesign::Lines>;

    float Diffuse(std::size_t side, float sample) noexcept;
    void MoveTuning() noexcept;

    std::vector<float> m_memory;
    ReverbDesign::Delays m_delays;
    ReverbDesign::Tuning m_tuning;
    ReverbDesign::Tuning m_from;
    ReverbDesign::Tuning m_goal;
    SmoothRamp m_toGoal; ///< share of the way from `m_from`
    SmoothRamp m_intake;
    Frame m_damped = {}; ///< what went round last
    std::array<Line, 2> m_before;
    std::array<std::array<Line, ReverbDesign::Diffusers>, 2> m_diffusers;
    std::array<Line, ReverbDesign::Lines> m_lines;
};

} // namespace velmo::engine
