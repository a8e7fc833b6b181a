#include "ReverbNetwork.h"

#include <algorithm>
#include <cmath>

namespace velmo::engine {

namespace {

constexpr std::size_t Lines = ReverbDesign::Lines;

/// Rows of the Hadamard matrix: both sides are made of all lines and have nothing in common.
constexpr std::array<float, Lines> LeftSigns = {1, -1, -1, 1, 1, -1, -1, 1};
constexpr std::array<float, Lines> RightSigns = {1, 1, -1, -1, -1, -1, 1, 1};

/// By the matrix, in three steps of sums and differences.
void MixLines(std::array<float, Lines>& frame)
{
    const float unit = 1.0f / std::sqrt(static_cast<float>(Lines));
    for (std::size_t apart = 1; apart < Lines; apart *= 2)
        for (std::size_t i = 0; i < Lines; ++i)
            if ((i & apart) == 0) {
                const float sum = frame[i] + frame[i + apart];
                frame[i + apart] = frame[i] - frame[i + apart];
                frame[i] = sum;
            }
    for (float& sample : frame)
        sample *= unit;
}

/// Far beyond what is heard; what is no number isn't below it either.
float Sane(float sample)
{
    constexpr float Beyond = 1e6f;
    return std::abs(sample) < Beyond ? sample : 0.0f;
}

} // namespace

ReverbNetwork::ReverbNetwork(std::uint32_t sampleRate)
    : m_memory(MostReverbFrames(sampleRate))
{}

void ReverbNetwork::Start(const ReverbDesign& design) noexcept
{
    m_delays = design.delays;
    m_tuning = design.tuning;
    m_toGoal = SmoothRamp();
    m_intake = SmoothRamp();
    m_damped = {};
    float* free = m_memory.data();
    const auto place = [&free](std::uint32_t length) {
        const Line line = {.samples = free, .length = length, .position = 0};
        free += length;
        return line;
    };
    for (std::size_t side = 0; side < 2; ++side) {
        m_before[side] = place(m_delays.before);
        for (std::size_t i = 0; i < ReverbDesign::Diffusers; ++i)
            m_diffusers[side][i] = place(m_delays.diffusers[side][i]);
    }
    for (std::size_t i = 0; i < Lines; ++i)
        m_lines[i] = place(m_delays.lines[i]);
    std::fill(m_memory.data(), free, 0.0f);
}

float ReverbNetwork::Diffuse(std::size_t side, float sample) noexcept
{
    const float g = m_delays.diffusion;
    for (Line& line : m_diffusers[side]) {
        const float oldest = line.Oldest();
        const float in = sample - g * oldest;
        line.Replace(in);
        sample = oldest + g * in;
    }
    return sample;
}

void ReverbNetwork::Retune(const ReverbDesign::Tuning& tuning, std::size_t frames) noexcept
{
    m_from = m_tuning;
    m_goal = tuning;
    m_toGoal = SmoothRamp();
    m_toGoal.Start(1, frames);
}

void ReverbNetwork::MoveTuning() noexcept
{
    const float share = m_toGoal.Next();
    for (std::size_t i = 0; i < Lines; ++i) {
        m_tuning.gain[i] = std::lerp(m_from.gain[i], m_goal.gain[i], share);
        m_tuning.damp[i] = std::lerp(m_from.damp[i], m_goal.damp[i], share);
    }
    m_tuning.scale = std::lerp(m_from.scale, m_goal.scale, share);
}

float ReverbNetwork::Process(const float* send, float* wet, std::size_t frames) noexcept
{
    float peak = 0;
    for (std::size_t n = 0; n < frames; ++n) {
        if (m_toGoal.IsMoving())
            MoveTuning();
        const float intake = m_intake.Next();
        std::array<float, 2> in = {};
        for (std::size_t side = 0; side < 2; ++side) {
            const float sample = send != nullptr ? intake * Sane(send[2 * n + side]) : 0.0f;
            in[side] = Diffuse(side, m_before[side].Oldest());
            m_before[side].Replace(sample);
            peak = std::max(peak, std::abs(sample));
        }
        std::array<float, 2> out = {};
        for (std::size_t i = 0; i < Lines; ++i) {
            const float sample = m_lines[i].Oldest();
            out[0] += LeftSigns[i] * sample;
            out[1] += RightSigns[i] * sample;
            m_damped[i] = m_tuning.gain[i] * sample + m_tuning.damp[i] * m_damped[i];
        }
        Frame round = m_damped;
        MixLines(round);
        for (std::size_t i = 0; i < Lines; ++i) {
            const float sample = round[i] + in[i % 2];
            m_lines[i].Replace(sample);
            peak = std::max(peak, std::abs(sample));
        }
        wet[2 * n] = m_tuning.scale * out[0];
        wet[2 * n + 1] = m_tuning.scale * out[1];
    }
    return peak * m_tuning.scale * static_cast<float>(Lines);
}

} // namespace velmo::engine
