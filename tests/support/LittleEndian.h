#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

namespace velmo::test {

/// The lowest `bytes` bytes of each number, the lowest first.
inline std::string LittleEndian(int bytes, std::initializer_list<std::uint64_t> numbers)
{
    std::string all;
    for (const std::uint64_t number : numbers)
        for (int i = 0; i < bytes; ++i)
            all += static_cast<char>(number >> (8 * i) & 0xFF);
    return all;
}

} // namespace velmo::test
