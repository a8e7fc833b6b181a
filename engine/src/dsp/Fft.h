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
/// The tables are made by the constructor; any thread may transform then.
class Fft
{
public:
    static constexpr std::size_t Points = 2048;
    static constexpr std::size_t Half = Points / 2;

    struct Complex
    {
        alignas(64) std::array<float, Half> re;
        alignas(64) std::array<float, Half> im;
    };

    Fft();

    /// `signal` holds the even samples in `re`, the odd ones in `im`; it is used up. Writes the
    /// squares of the magnitudes of bins 0 to 1023.
    void Power(Complex& signal, float* power) const noexcept;

private:
    void Transform(Complex& signal, Complex& spare) const noexcept;

    using Turns = std::array<std::array<float, Half / 4>, 3>;

    Turns m_cos = {}; ///< of one, two and three times a quarter turn in `Half` / 4 steps
    Turns m_sin = {}; ///< negative: the direction of the transform
    std::array<float, Half> m_halfCos = {}; ///< of half a turn in `Half` steps
    std::array<float, Half> m_halfSin = {};
};

} // namespace velmo::engine
