#include "BandRow.h"

#include <algorithm>
#include <cmath>

namespace velmo::fx {

namespace {

constexpr std::array Members = {&PeakingBand::keep,
                                &PeakingBand::couple,
                                &PeakingBand::follow,
                                &PeakingBand::ring,
                                &PeakingBand::direct};
static_assert(Members.size() == Cascade::Coefficients);

} // namespace

std::array<BandRow::State, MaxBands> BandRow::States() const noexcept
{
    std::array<State, MaxBands> states = {};
    for (int place = 0; place < m_count; ++place) {
        const Cascade& cascade = m_cascades[place / Cascade::MaxBands];
        State& state = states[m_bandAt[place]];
        for (int side = 0; side < 2; ++side) {
            const int lane = place % Cascade::MaxBands * 2 + side;
            state.s1[side] = cascade.s1[lane];
            state.s2[side] = cascade.s2[lane];
        }
    }
    return states;
}

void BandRow::Place(int place,
                    const PeakingBand& from,
                    const PeakingBand& to,
                    const State& state) noexcept
{
    Cascade& cascade = m_cascades[place / Cascade::MaxBands];
    for (int side = 0; side < 2; ++side) {
        const int lane = place % Cascade::MaxBands * 2 + side;
        for (std::size_t c = 0; c < Members.size(); ++c) {
            cascade.base[c][lane] = from.*Members[c];
            cascade.change[c][lane] = to.*Members[c] - from.*Members[c];
        }
        cascade.s1[lane] = state.s1[side];
        cascade.s2[lane] = state.s2[side];
    }
    ++cascade.bands;
}

void BandRow::Arrange(const BandSet& from, const BandSet& to) noexcept
{
    const std::array<State, MaxBands> states = States();
    for (int i = 0; i < Cascades(); ++i)
        m_cascades[i] = {};
    m_count = 0;
    for (int band = 0; band < MaxBands; ++band) {
        if (!from.IsActive(band))
            continue;
        Place(m_count, from.bands[band], to.bands[band], states[band]);
        m_bandAt[m_count++] = band;
    }
}

void BandRow::Run(RunCascade run, float* samples, std::size_t frames, const float* weights) noexcept
{
    for (int i = 0; i < Cascades(); ++i)
        run(m_cascades[i], samples, frames, weights);
}

bool BandRow::IsFinite() const noexcept
{
    // What is no number makes the sum none; so does an infinite state times 0.
    float sum = 0;
    for (int i = 0; i < Cascades(); ++i)
        for (int lane = 0; lane < Cascade::Lanes; ++lane)
            sum += 0.0f * m_cascades[i].s1[lane] + 0.0f * m_cascades[i].s2[lane];
    return sum == 0;
}

void BandRow::ClearStates() noexcept
{
    for (Cascade& cascade : m_cascades) {
        std::fill(std::begin(cascade.s1), std::end(cascade.s1), 0.0f);
        std::fill(std::begin(cascade.s2), std::end(cascade.s2), 0.0f);
    }
}

} // namespace velmo::fx
