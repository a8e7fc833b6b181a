/// Keeps filters fast while they die away.
#pragma once

#if defined(__SSE__)
#  include <xmmintrin.h>
#elif defined(__aarch64__)
#  include <cstdint>
#endif

namespace velmo::engine {

/// While one exists, its thread's calculations take denormal numbers, on which some processors are
/// a hundred times slower, for 0. Elsewhere than on x86 and 64-bit ARM it does nothing.
class FlushDenormals
{
public:
#if defined(__SSE__)
    FlushDenormals() noexcept
        : m_before(_mm_getcsr())
    {
        constexpr unsigned FlushToZero = 0x8000;
        constexpr unsigned DenormalsAreZero = 0x0040;
        _mm_setcsr(m_before | FlushToZero | DenormalsAreZero);
    }
    ~FlushDenormals()
    {
        _mm_setcsr(m_before);
    }

private:
    unsigned m_before;
#elif defined(__aarch64__)
    FlushDenormals() noexcept
    {
        constexpr std::uint64_t FlushToZero = std::uint64_t{1} << 24;
        asm volatile("mrs %0, fpcr" : "=r"(m_before));
        asm volatile("msr fpcr, %0" : : "r"(m_before | FlushToZero));
    }
    ~FlushDenormals()
    {
        asm volatile("msr fpcr, %0" : : "r"(m_before));
    }

private:
    std::uint64_t m_before = 0;
#else
    FlushDenormals() noexcept
    {}
    ~FlushDenormals()
    {}
#endif

public:
    FlushDenormals(const FlushDenormals&) = delete;
    FlushDenormals& operator=(const FlushDenormals&) = delete;
};

} // namespace velmo::engine
