/// Float samples as a device or a file takes them. For all: what is no number is 0, what lies
/// outside is the nearest that there is. Any thread, no allocation.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// Converts `count` samples to 16 bits of the machine's byte order: round(sample * 32768), halves
/// to the even neighbour. What was made from 16 bits as value / 32768 comes out unchanged.
void ToInt16(const float* in, std::size_t count, std::int16_t* out) noexcept;

/// The way back, exact: value / 32768.
void FromInt16(const std::int16_t* in, std::size_t count, float* out) noexcept;

/// `ToInt16`, but little endian, whatever the machine's order.
void ToInt16LittleEndian(const float* in, std::size_t count, std::uint8_t* out) noexcept;

/// Rounds `count` samples to the 256 steps of 8 bits, -1 to 127/128, in place; halves to the even
/// neighbour.
void Quantise8Bit(float* samples, std::size_t count) noexcept;

} // namespace velmo::engine
