#include "Fft.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::size_t Quarter = Fft::Half / 4;

/// Where complex numbers lie: real and imaginary parts `step` floats apart from their neighbours.
struct Source
{
    const float* re;
    const float* im;
    std::size_t step;
};

struct Target
{
    float* re;
    float* im;
};

/// Turns by one, two and three times an angle.
struct Twiddles
{
    float re1, im1, re2, im2, re3, im3;
};

/// The places of the four outputs of a butterfly, from `first` on, `apart` from each other.
struct Places
{
    std::size_t first;
    std::size_t apart;
};

[[gnu::always_inline]] inline Twiddles TurnsBy(float re, float im)
{
    const float re2 = re * re - im * im;
    const float im2 = 2 * re * im;
    return {.re1 = re,
            .im1 = im,
            .re2 = re2,
            .im2 = im2,
            .re3 = re * re2 - im * im2,
            .im3 = re * im2 + im * re2};
}

/// A butterfly of four: from `Quarter` apart at `in` to `places`.
[[gnu::always_inline]] inline void Butterfly(
    const Source& from, std::size_t in, const Target& to, Places places, const Twiddles& w)
{
    const float* const re = from.re + in * from.step;
    const float* const im = from.im + in * from.step;
    const std::size_t quarter = Quarter * from.step;
    const float sumRe = re[0] + re[2 * quarter];
    const float sumIm = im[0] + im[2 * quarter];
    const float differenceRe = re[0] - re[2 * quarter];
    const float differenceIm = im[0] - im[2 * quarter];
    const float oddSumRe = re[quarter] + re[3 * quarter];
    const float oddSumIm = im[quarter] + im[3 * quarter];
    const float oddDifferenceRe = re[quarter] - re[3 * quarter];
    const float oddDifferenceIm = im[quarter] - im[3 * quarter];
    const float re1 = differenceRe + oddDifferenceIm;
    const float im1 = differenceIm - oddDifferenceRe;
    const float re2 = sumRe - oddSumRe;
    const float im2 = sumIm - oddSumIm;
    const float re3 = differenceRe - oddDifferenceIm;
    const float im3 = differenceIm + oddDifferenceRe;
    float* const outRe = to.re + places.first;
    float* const outIm = to.im + places.first;
    const std::size_t apart = places.apart;
    outRe[0] = sumRe + oddSumRe;
    outIm[0] = sumIm + oddSumIm;
    outRe[apart] = re1 * w.re1 - im1 * w.im1;
    outIm[apart] = re1 * w.im1 + im1 * w.re1;
    outRe[2 * apart] = re2 * w.re2 - im2 * w.im2;
    outIm[2 * apart] = re2 * w.im2 + im2 * w.re2;
    outRe[3 * apart] = re3 * w.re3 - im3 * w.im3;
    outIm[3 * apart] = re3 * w.im3 + im3 * w.re3;
}

/// The first pass: it has no neighbours of one angle, but neighbouring angles.
void FirstPass(const float* signal, const Target& to, const float* turnRe, const float* turnIm)
{
    const Source from{.re = signal, .im = signal + 1, .step = 2};
#pragma GCC ivdep // the arrays don't overlap
    for (std::size_t p = 0; p < Quarter; ++p)
        Butterfly(from, p, to, {.first = 4 * p, .apart = 1}, TurnsBy(turnRe[p], turnIm[p]));
}

/// A run of a later pass: `run` neighbours of one angle, from `p` on.
void PassRun(const Target& source, const Target& to, std::size_t p, std::size_t run, Twiddles w)
{
    const Source from{.re = source.re, .im = source.im, .step = 1};
#pragma GCC ivdep // the arrays don't overlap
    for (std::size_t q = 0; q < run; ++q)
        Butterfly(from, p + q, to, {.first = 4 * p + q, .apart = run}, w);
}

[[gnu::always_inline]] inline float Magnitude(float power)
{
    constexpr float Beyond = 1e30f; // neither infinite nor no number, of which this is false too
    return power < Beyond ? std::sqrt(power) : 0.0f;
}

} // namespace

Fft::Fft()
{
    for (std::size_t i = 0; i < m_cos.size(); ++i)
        m_cos[i] = static_cast<float>(std::cos(std::numbers::pi * static_cast<double>(i) / Half));
    for (std::size_t i = 0; i < Quarter; ++i) {
        m_turnRe[i] = m_cos[2 * i];
        m_turnIm[i] = -m_cos[Half / 2 - 2 * i];
    }
}

/// There is an odd number of passes, of which the even ones go back to where the signal was.
void Fft::Transform(Signal& signal, Complex& result) const noexcept
{
    Target to{.re = result.re.data(), .im = result.im.data()};
    Target from{.re = signal.data(), .im = signal.data() + Half};
    FirstPass(signal.data(), to, m_turnRe.data(), m_turnIm.data());
    for (std::size_t run = 4; run < Half; run *= 4) {
        std::swap(from, to);
        for (std::size_t p = 0; p < Quarter; p += run)
            PassRun(from, to, p, run, TurnsBy(m_turnRe[p], m_turnIm[p]));
    }
}

void Fft::Magnitudes(Signal& signal, float* __restrict magnitudes) const noexcept
{
    Complex result; // NOLINT(cppcoreguidelines-pro-type-member-init): the first pass fills it
    Transform(signal, result);
    const float* const re = result.re.data();
    const float* const im = result.im.data();
    constexpr std::size_t Middle = Half / 2;
    const float sum = 0.5f * (re[0] + im[0]);
    magnitudes[0] = Magnitude(sum * sum);
    magnitudes[Middle] = Magnitude(re[Middle] * re[Middle] + im[Middle] * im[Middle]);
    for (std::size_t i = 1; i < Middle; ++i) {
        // Half the spectra of the even samples, and of the odd ones with their turn. In the bin
        // that lies as far below the end the odd ones come with the other sign.
        const float evenRe = 0.5f * (re[i] + re[Half - i]);
        const float evenIm = 0.5f * (im[i] - im[Half - i]);
        const float oddRe = 0.5f * (im[i] + im[Half - i]);
        const float oddIm = 0.5f * (re[Half - i] - re[i]);
        const float turnedRe = oddRe * m_cos[i] + oddIm * m_cos[Middle - i];
        const float turnedIm = oddIm * m_cos[i] - oddRe * m_cos[Middle - i];
        const float lowRe = evenRe + turnedRe;
        const float lowIm = evenIm + turnedIm;
        const float highRe = evenRe - turnedRe;
        const float highIm = evenIm - turnedIm;
        magnitudes[i] = Magnitude(lowRe * lowRe + lowIm * lowIm);
        magnitudes[Half - i] = Magnitude(highRe * highRe + highIm * highIm);
    }
}

} // namespace velmo::engine
