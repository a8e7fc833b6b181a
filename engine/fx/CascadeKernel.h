/// The filters' inner loop, for vectors of any width. Only for the files that choose the width:
/// each of them may be compiled for another processor, so they must share no code. What is here is
/// made for vectors of each file's own, which are in an unnamed namespace, and calls nothing that a
/// library defines inline.
///
/// A cascade has no two filters that could work on the same frame at the same time, but the band at
/// place k can work on frame n - k while the one before it works on the next: each step all lanes
/// take their neighbours' last results, and one more frame enters at the first band. A call begins
/// and ends with the steps in which not all places have a frame; there the states of the idle ones
/// are kept.
#pragma once

#include "Cascade.h"

namespace velmo::fx {

/// Runs `Groups` vectors of the `Vector` type: `Float` and `Int` of one width, `Fma(a, b, c)` =
/// a * b + c, `Shift(before, own)`: the last pair of `before`, then all but the last of `own`, and
/// `Pair(samples)`: a vector whose last pair is that.
template<class Vector, int Groups, bool Moving>
class CascadeLoop
{
public:
    using Float = typename Vector::Float;
    using Int = typename Vector::Int;

    static void Run(Cascade& cascade, float* samples, std::size_t frames, const float* weights)
    {
        CascadeLoop loop(cascade);
        const auto count = static_cast<long>(frames);
        constexpr long Last = Places - 1;
        const long full = count > Last ? count : Last;
        long step = 0;
        for (; step < Last; ++step)
            loop.template Step<true>(samples, count, weights, step);
        for (; step < full; ++step)
            loop.template Step<false>(samples, count, weights, step);
        for (; step < count + Last; ++step)
            loop.template Step<true>(samples, count, weights, step);
        loop.Store(cascade);
    }

private:
    static constexpr int Width = sizeof(Float) / sizeof(float);
    static constexpr int Places = Groups * Width / 2;

    explicit CascadeLoop(const Cascade& cascade)
    {
        for (int group = 0; group < Groups; ++group) {
            m_s1[group] = Load(cascade.s1, group);
            m_s2[group] = Load(cascade.s2, group);
            m_out[group] = Float{};
            for (int c = 0; c < Cascade::Coefficients; ++c) {
                m_base[group][c] = Load(cascade.base[c], group);
                m_change[group][c] = Load(cascade.change[c], group);
            }
            for (int lane = 0; lane < Width; ++lane)
                m_place[group][lane] = (group * Width + lane) / 2;
        }
    }

    static constexpr long FirstLane(int group) { return static_cast<long>(group) * Width; }

    static Float Load(const float* lanes, int group)
    {
        Float vector;
        __builtin_memcpy(&vector, lanes + FirstLane(group), sizeof vector);
        return vector;
    }

    void Store(Cascade& cascade) const
    {
        for (int group = 0; group < Groups; ++group) {
            __builtin_memcpy(cascade.s1 + FirstLane(group), &m_s1[group], sizeof(Float));
            __builtin_memcpy(cascade.s2 + FirstLane(group), &m_s2[group], sizeof(Float));
        }
    }

    template<bool Edge>
    [[gnu::always_inline]] void Step(float* samples, long frames, const float* weights, long step)
    {
        const Float weight = Moving ? Float{} + weights[step] : Float{};
        // From the last group to the first: each needs what the one before it gave last time.
#pragma GCC unroll 8
        for (int group = Groups - 1; group > 0; --group)
            Filter<Edge>(group, m_out[group - 1], frames, weight, step);
        const bool entering = !Edge || step < frames;
        Filter<Edge>(
            0, entering ? Vector::Pair(samples + 2 * step) : Float{}, frames, weight, step);
        if (const long leaving = step - (Places - 1); !Edge || leaving >= 0)
            __builtin_memcpy(samples + 2 * leaving,
                             reinterpret_cast<const char*>(&m_out[Groups - 1])
                                 + sizeof(float) * (Width - 2),
                             2 * sizeof(float));
    }

    template<bool Edge>
    [[gnu::always_inline]] void Filter(
        int group, Float before, long frames, Float weight, long step)
    {
        const Float x = Vector::Shift(before, m_out[group]);
        const Float s1 = m_s1[group];
        const Float s2 = m_s2[group];
        const Float u = x - s2;
        m_out[group] = Vector::Fma(Value<Cascade::Direct>(group, weight),
                                   u,
                                   Vector::Fma(Value<Cascade::Ring>(group, weight), s1, x));
        const Float couple = Value<Cascade::Couple>(group, weight);
        const Float next1 = Vector::Fma(Value<Cascade::Keep>(group, weight), s1, couple * u);
        const Float next2 =
            Vector::Fma(Value<Cascade::Follow>(group, weight), u, Vector::Fma(couple, s1, s2));
        if constexpr (Edge) {
            const Int now = Int{} + static_cast<int>(step);
            const Int busy =
                (m_place[group] <= now) & (m_place[group] > now - static_cast<int>(frames));
            m_s1[group] = busy ? next1 : s1;
            m_s2[group] = busy ? next2 : s2;
        } else {
            m_s1[group] = next1;
            m_s2[group] = next2;
        }
    }

    template<int Which>
    [[gnu::always_inline]] Float Value(int group, Float weight) const
    {
        if constexpr (Moving)
            return Vector::Fma(weight, m_change[group][Which], m_base[group][Which]);
        else
            return m_base[group][Which];
    }

    Float m_s1[Groups];
    Float m_s2[Groups];
    Float m_out[Groups];
    Float m_base[Groups][Cascade::Coefficients];
    Float m_change[Groups][Cascade::Coefficients];
    Int m_place[Groups];
};

/// Runs as few vectors as hold the bands.
template<class Vector, int Groups>
void RunGroups(Cascade& cascade, float* samples, std::size_t frames, const float* weights)
{
    constexpr int PlacesBelow = (Groups - 1) * static_cast<int>(sizeof(typename Vector::Float) / 8);
    if constexpr (Groups > 1) {
        if (cascade.bands <= PlacesBelow) {
            RunGroups<Vector, Groups - 1>(cascade, samples, frames, weights);
            return;
        }
    }
    if (weights != nullptr)
        CascadeLoop<Vector, Groups, true>::Run(cascade, samples, frames, weights);
    else
        CascadeLoop<Vector, Groups, false>::Run(cascade, samples, frames, weights);
}

} // namespace velmo::fx
