/// The transform that the spectrum is made with.
#pragma once

#include <array>
#include <cstddef>

namespace velmo::engine {

/// Discrete Fourier transform of 2048 real numbers: as one of 1024 complex numbers, made of the
/// even and the odd ones, whose halves are then told apart. Five passes of radix 4 in the order of
/// Stockham, from one array to another and back, so that nothing needs to be put in order and the
/// inner loops run over neighbours. Real and imaginary parts are in arrays of their own.
///
/// A picture asks for one transform and then sleeps, and finds neither code nor data in the
/// processor's caches the next time: to fetch them takes longer than all the arithmetic. So the
/// tables are as small as can be, and all else is worked out from them.
///
/// They are made by the constructor; any thread may transform then.
class Fft
{
public:
    static constexpr std::size_t Points = 2048;
    static constexpr std::size_t Half = Points / 2;

    using Signal = std::array<float, Points>;

    Fft();

    /// cos(pi * i / 1024) for `i` from 0 to 512.
    const std::array<float, Half / 2 + 1>& Cosine() const noexcept { return m_cos; }

    /// Writes the magnitudes of bins 0 to 1023, that of bin 0 halved; 0 for what is too large to
    /// mean something, or no number. `signal` is used up.
    void Magnitudes(Signal& signal, float* magnitudes) const noexcept;

private:
    struct Complex
    {
        std::array<float, Half> re;
        std::array<float, Half> im;
    };

    void Transform(Signal& signal, Complex& result) const noexcept;

    std::array<float, Half / 2 + 1> m_cos = {};
    // Turns by `i` of 1024 parts of the circle, in the direction of the transform.
    std::array<float, Half / 4> m_turnRe = {};
    std::array<float, Half / 4> m_turnIm = {};
};

} // namespace velmo::engine
