#include "Fft.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::size_t Quarter = Fft::Half / 4;

/// Three turns by one, two and three times an angle.
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

/// A butterfly of four: from `Quarter` apart at `in` to `out`.
[[gnu::always_inline]] inline void Butterfly(const float* re,
                                             const float* im,
                                             float* outRe,
                                             float* outIm,
                                             std::size_t in,
                                             Places out,
                                             const Twiddles& w)
{
    const float sumRe = re[in] + re[in + 2 * Quarter];
    const float sumIm = im[in] + im[in + 2 * Quarter];
    const float differenceRe = re[in] - re[in + 2 * Quarter];
    const float differenceIm = im[in] - im[in + 2 * Quarter];
    const float oddSumRe = re[in + Quarter] + re[in + 3 * Quarter];
    const float oddSumIm = im[in + Quarter] + im[in + 3 * Quarter];
    const float oddDifferenceRe = re[in + Quarter] - re[in + 3 * Quarter];
    const float oddDifferenceIm = im[in + Quarter] - im[in + 3 * Quarter];
    const float re1 = differenceRe + oddDifferenceIm;
    const float im1 = differenceIm - oddDifferenceRe;
    const float re2 = sumRe - oddSumRe;
    const float im2 = sumIm - oddSumIm;
    const float re3 = differenceRe - oddDifferenceIm;
    const float im3 = differenceIm + oddDifferenceRe;
    const auto [first, apart] = out;
    outRe[first] = sumRe + oddSumRe;
    outIm[first] = sumIm + oddSumIm;
    outRe[first + apart] = re1 * w.re1 - im1 * w.im1;
    outIm[first + apart] = re1 * w.im1 + im1 * w.re1;
    outRe[first + 2 * apart] = re2 * w.re2 - im2 * w.im2;
    outIm[first + 2 * apart] = re2 * w.im2 + im2 * w.re2;
    outRe[first + 3 * apart] = re3 * w.re3 - im3 * w.im3;
    outIm[first + 3 * apart] = re3 * w.im3 + im3 * w.re3;
}

} // namespace

Fft::Fft()
{
    for (std::size_t i = 0; i < Half; ++i) {
        const double angle = -std::numbers::pi * static_cast<double>(i) / Half;
        m_halfCos[i] = static_cast<float>(std::cos(angle));
        m_halfSin[i] = static_cast<float>(std::sin(angle));
    }
    for (std::size_t i = 0; i < Quarter; ++i)
        for (std::size_t k = 1; k < 4; ++k) {
            const double angle = -2.0 * std::numbers::pi * static_cast<double>(k * i) / Half;
            m_cos[k - 1][i] = static_cast<float>(std::cos(angle));
            m_sin[k - 1][i] = static_cast<float>(std::sin(angle));
        }
}

/// The result is in `spare`, as there is an odd number of passes.
void Fft::Transform(Complex& signal, Complex& spare) const noexcept
{
    const auto twiddles = [this](std::size_t i) {
        return Twiddles{
            m_cos[0][i], m_sin[0][i], m_cos[1][i], m_sin[1][i], m_cos[2][i], m_sin[2][i]};
    };
    Complex* from = &signal;
    Complex* to = &spare;
    // The first pass has no neighbours of one angle, but neighbouring angles.
#pragma GCC ivdep
    for (std::size_t p = 0; p < Quarter; ++p)
        Butterfly(from->re.data(),
                  from->im.data(),
                  to->re.data(),
                  to->im.data(),
                  p,
                  {.first = 4 * p, .apart = 1},
                  twiddles(p));
    for (std::size_t run = 4; run < Half; run *= 4) {
        std::swap(from, to);
        const float* __restrict re = from->re.data();
        const float* __restrict im = from->im.data();
        float* __restrict outRe = to->re.data();
        float* __restrict outIm = to->im.data();
        for (std::size_t p = 0; p < Quarter; p += run) {
            const Twiddles w = twiddles(p);
#pragma GCC ivdep // the two arrays don't overlap
            for (std::size_t q = 0; q < run; ++q)
                Butterfly(re, im, outRe, outIm, p + q, {.first = 4 * p + q, .apart = run}, w);
        }
    }
}

void Fft::Power(Complex& signal, float* power) const noexcept
{
    Complex spare; // NOLINT(cppcoreguidelines-pro-type-member-init): the first pass fills it
    Transform(signal, spare);
    const float* re = spare.re.data();
    const float* im = spare.im.data();
    power[0] = (re[0] + im[0]) * (re[0] + im[0]);
    for (std::size_t i = 1; i < Half; ++i) {
        // Twice the spectra of the even and of the odd samples.
        const float evenRe = re[i] + re[Half - i];
        const float evenIm = im[i] - im[Half - i];
        const float oddRe = im[i] + im[Half - i];
        const float oddIm = re[Half - i] - re[i];
        const float binRe = evenRe + oddRe * m_halfCos[i] - oddIm * m_halfSin[i];
        const float binIm = evenIm + oddRe * m_halfSin[i] + oddIm * m_halfCos[i];
        power[i] = 0.25f * (binRe * binRe + binIm * binIm);
    }
}

} // namespace velmo::engine
