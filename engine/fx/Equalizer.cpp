#include "Equalizer.h"

#include "dsp/FlushDenormals.h"
#include "dsp/SmoothRamp.h"

#include <algorithm>
#include <cmath>

namespace velmo::fx {

namespace {

/// Frames of a change that are filtered at once.
constexpr std::size_t MoveBlock = 256;

bool SameBand(const BASS_BFX_PEAKEQ& a, const BASS_BFX_PEAKEQ& b)
{
    return a.fBandwidth == b.fBandwidth && a.fQ == b.fQ && a.fCenter == b.fCenter
           && a.fGain == b.fGain;
}

} // namespace

Equalizer::Equalizer(std::uint32_t sampleRate, RunCascade run) noexcept
    : m_sampleRate(sampleRate)
    , m_run(run)
    , m_moveFrames(std::max<std::size_t>(sampleRate * std::size_t{3} / 100, 1))
    , m_movedFrames(m_moveFrames)
{}

int Equalizer::Set(const BASS_BFX_PEAKEQ& record) noexcept
{
    if (!IsPossible(record))
        return BASS_ERROR_ILLPARAM;
    const std::uint64_t bit = std::uint64_t{1} << record.lBand;
    BASS_BFX_PEAKEQ& stored = m_records[record.lBand];
    if ((m_present & bit) != 0 && SameBand(stored, record))
        return BASS_OK;
    stored = record;
    m_present |= bit;
    const bool active = IsActive(record, m_sampleRate);
    if (!active && !m_wanted.IsActive(record.lBand))
        return BASS_OK; // nothing to hear of it
    if (active) {
        m_wanted.active |= bit;
        m_wanted.bands[record.lBand] = DesignPeakingBand(record, m_sampleRate);
    } else {
        m_wanted.active &= ~bit;
    }
    m_handover.Write(m_wanted);
    return BASS_OK;
}

int Equalizer::Get(BASS_BFX_PEAKEQ& record) const noexcept
{
    if (record.lBand < 0 || record.lBand >= MaxBands || (m_present >> record.lBand & 1) == 0)
        return BASS_ERROR_ILLPARAM;
    record = m_records[record.lBand];
    return BASS_OK;
}

void Equalizer::Process(float* samples, std::size_t frames) noexcept
{
    const engine::FlushDenormals flush;
    bool filtered = false;
    for (std::size_t done = 0; done < frames;) {
        TakeChange();
        float* rest = samples + 2 * done;
        std::size_t count = frames - done;
        if (m_movedFrames < m_moveFrames) {
            count = std::min({count, MoveBlock, m_moveFrames - m_movedFrames});
            Move(rest, count);
            filtered = true;
        } else if (!m_row.IsEmpty()) {
            m_row.Run(m_run, rest, count, nullptr);
            filtered = true;
        }
        done += count;
    }
    if (filtered && !m_row.IsFinite()) {
        m_row.ClearStates();
        std::replace_if(
            samples, samples + 2 * frames, [](float s) { return !std::isfinite(s); }, 0.0f);
    }
}

void Equalizer::Reset() noexcept
{
    if (m_movedFrames < m_moveFrames)
        Settle();
    m_row.ClearStates();
    m_started = false;
}

/// A change that comes while another is under way has to wait: turning round in the middle of the
/// curve would put a bend into the sound.
void Equalizer::TakeChange() noexcept
{
    if (m_movedFrames < m_moveFrames)
        return;
    const BandSet* goal = m_handover.Take();
    if (goal != nullptr && m_started) {
        BeginMove(*goal);
    } else if (goal != nullptr) {
        m_goal = *goal;
        Settle();
    }
    m_started = true;
}

/// A band that comes or goes has the poles of its sounding filter all the time, and the change is
/// in its part of the output alone.
void Equalizer::BeginMove(const BandSet& goal) noexcept
{
    BandSet from = m_goal;
    BandSet to = goal;
    from.active = to.active = m_goal.active | goal.active;
    for (int band = 0; band < MaxBands; ++band) {
        if (!m_goal.IsActive(band))
            from.bands[band] = goal.bands[band].Silent();
        if (!goal.IsActive(band))
            to.bands[band] = m_goal.bands[band].Silent();
    }
    m_row.Arrange(from, to);
    m_goal = goal;
    m_movedFrames = 0;
}

void Equalizer::Settle() noexcept
{
    m_row.Arrange(m_goal, m_goal);
    m_movedFrames = m_moveFrames;
}

void Equalizer::Move(float* samples, std::size_t frames) noexcept
{
    std::array<float, MoveBlock + Cascade::MaxBands> weights = {};
    for (std::size_t step = 0; step < frames + Cascade::MaxBands; ++step) {
        const std::size_t moved = std::min(m_movedFrames + step, m_moveFrames);
        weights[step] =
            engine::SmoothStep(static_cast<float>(moved) / static_cast<float>(m_moveFrames));
    }
    m_row.Run(m_run, samples, frames, weights.data());
    m_movedFrames += frames;
    if (m_movedFrames == m_moveFrames)
        Settle();
}

} // namespace velmo::fx
