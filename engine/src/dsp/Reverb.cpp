#include "Reverb.h"

#include "FlushDenormals.h"
#include "ReverbNetwork.h"
#include "SmoothRamp.h"
#include "TripleBuffer.h"

#include <algorithm>
#include <array>

namespace velmo::engine {

namespace {

constexpr std::size_t BlockFrames = 64;
constexpr float Inaudible = 3.16e-5f; // -90 dB

bool IsSilent(const float* send, std::size_t frames)
{
    return send == nullptr
           || std::all_of(send, send + 2 * frames, [](float sample) { return sample == 0; });
}

} // namespace

/// What the mixing thread works with. There are two networks: where the delays change, the old one
/// is faded to a new one, which begins empty; all else is changed in the one that sounds.
class Reverb::Mixing
{
public:
    explicit Mixing(std::uint32_t sampleRate)
        : m_sampleRate(sampleRate)
        , m_networks{ReverbNetwork(sampleRate), ReverbNetwork(sampleRate)}
    {}

    /// Thread that sets.
    void HandOver(const ReverbDesign& design) { m_designs.Write(design); }

    bool IsFadedOut() const noexcept { return m_level.Goal() == 0 && !m_level.IsMoving(); }
    bool Sounds() const noexcept { return m_sounds; }

    void Process(float level, const float* send, float* out, std::size_t frames) noexcept
    {
        for (std::size_t done = 0; done < frames; done += BlockFrames) {
            TakeDesign();
            if (!m_level.IsMoving() && m_level.Goal() != level)
                m_level.Start(level, LevelFrames());
            const float* block = send != nullptr ? send + 2 * done : nullptr;
            ProcessBlock(block, out + 2 * done, std::min(BlockFrames, frames - done));
        }
    }

    /// Once faded out: what is in the networks is not to be heard again.
    void Stop() noexcept
    {
        m_started = false;
        m_sounds = false;
        m_toOther = SmoothRamp();
    }

private:
    std::size_t LevelFrames() const noexcept { return m_sampleRate / 50; }
    std::size_t SwitchFrames() const noexcept { return m_sampleRate / 20; }
    ReverbNetwork& Current() noexcept { return m_networks[m_current]; }
    ReverbNetwork& Other() noexcept { return m_networks[1 - m_current]; }

    void TakeDesign() noexcept
    {
        const bool sounds = m_started && m_sounds;
        if (sounds && (m_toOther.IsMoving() || Current().IsRetuning()))
            return;
        if (const ReverbDesign* design = m_designs.Take())
            m_design = *design;
        else if (m_started)
            return;
        if (!sounds) {
            Current().Start(m_design);
            Current().FadeSend(1, LevelFrames());
            m_started = true;
        } else if (m_design.delays == Current().Delays()) {
            Current().Retune(m_design.tuning, SwitchFrames());
        } else {
            Other().Start(m_design);
            m_toOther = SmoothRamp();
            m_toOther.Start(1, SwitchFrames());
            Current().FadeSend(0, SwitchFrames());
            Other().FadeSend(1, SwitchFrames());
        }
    }

    void ProcessBlock(const float* send, float* out, std::size_t frames) noexcept
    {
        const bool silent = IsSilent(send, frames);
        std::array<float, 2 * BlockFrames> wet = {};
        if (!silent || m_sounds) {
            float peak = 0;
            if (m_toOther.IsMoving())
                peak = CrossFade(send, wet.data(), frames);
            else
                peak = Current().Process(send, wet.data(), frames);
            Survey(peak, silent, frames);
        }
        for (std::size_t n = 0; n < frames; ++n) {
            const float level = m_level.Next();
            out[2 * n] += level * wet[2 * n];
            out[2 * n + 1] += level * wet[2 * n + 1];
        }
    }

    float CrossFade(const float* send, float* wet, std::size_t frames) noexcept
    {
        std::array<float, 2 * BlockFrames> next = {};
        const float peak = std::max(Current().Process(send, wet, frames),
                                    Other().Process(send, next.data(), frames));
        for (std::size_t n = 0; n < frames; ++n) {
            const float share = m_toOther.Next();
            for (std::size_t i = 2 * n; i < 2 * n + 2; ++i)
                wet[i] += share * (next[i] - wet[i]);
        }
        if (!m_toOther.IsMoving())
            m_current = 1 - m_current;
        return peak;
    }

    /// When nothing loud has gone through a network for as long as it keeps sound, nothing is left.
    void Survey(float peak, bool silent, std::size_t frames) noexcept
    {
        m_quietFrames = peak < Inaudible ? m_quietFrames + frames : 0;
        m_silentFrames = silent ? m_silentFrames + frames : 0;
        m_sounds = m_toOther.IsMoving()
                   || (m_quietFrames <= Current().Delays().Longest()
                       && m_silentFrames < MaxTailSeconds * m_sampleRate);
    }

    std::size_t m_sampleRate;
    TripleBuffer<ReverbDesign> m_designs;
    ReverbDesign m_design;
    std::array<ReverbNetwork, 2> m_networks;
    std::size_t m_current = 0;
    bool m_started = false;
    bool m_sounds = false;
    SmoothRamp m_level;
    SmoothRamp m_toOther; ///< share of the other network
    std::size_t m_quietFrames = 0;
    std::size_t m_silentFrames = 0;
};

Reverb::Reverb(std::uint32_t sampleRate) noexcept
    : m_sampleRate(sampleRate)
{}

Reverb::~Reverb() = default;

void Reverb::Set(const ReverbParameters& parameters)
{
    const ReverbDesign design = DesignReverb(parameters, m_sampleRate);
    if (design.level > 0) {
        if (m_mixing == nullptr)
            m_mixing = std::make_unique<Mixing>(m_sampleRate);
        m_mixing->HandOver(design);
    }
    m_level.store(design.level, std::memory_order_release);
}

void Reverb::Process(const float* send, float* out, std::size_t frames) noexcept
{
    if (!Active())
        return;
    m_running.store(true, std::memory_order_release);
    const FlushDenormals flush;
    const float level = m_level.load(std::memory_order_acquire);
    m_mixing->Process(level, send, out, frames);
    if (m_mixing->IsFadedOut()) {
        m_mixing->Stop();
        m_running.store(false, std::memory_order_release);
    }
    m_sounding.store(m_mixing->Sounds(), std::memory_order_release);
}

} // namespace velmo::engine
