/// The modules, byte by byte.
#include "TestFiles.h"

#include "support/LittleEndian.h"

#include <cmath>
#include <numbers>
#include <string_view>

namespace velmo::test {
namespace {

using namespace std::string_literals;

Bytes Zeros(std::size_t count)
{
    return Bytes(count, '\0');
}

Bytes Padded(std::string_view text, std::size_t width)
{
    return Bytes(text) + Zeros(width - text.size());
}

const Bytes Note = "\x01\xAC\x10\0"s; ///< C-2 of the first sample

/// A ProTracker module with one sample of signed 8 bits, of which the first words are its loop.
Bytes ModOf(const Bytes& sample, char loopWords, const Bytes& patterns)
{
    Bytes song = Padded("song", 42) + '\0' + static_cast<char>(sample.size() / 2) + "\0\x40\0\0\0"s
                 + loopWords;
    for (int other = 2; other <= 31; ++other)
        song += Zeros(29) + "\1";
    const auto count = static_cast<char>(patterns.size() / 1024);
    return song + count + "\x7F\0\1"s + Zeros(126) + "M.K." + patterns + sample;
}

/// With a short burst, a square wave, for its notes.
Bytes MakeMod()
{
    Bytes patterns;
    for (std::size_t row = 0; row < 2 * 64; ++row)
        patterns += (row % 16 == 0 ? Note : Zeros(4)) + Zeros(12);
    Bytes burst;
    for (int i = 0; i < 400; ++i)
        burst += i / 16 % 2 == 0 ? '\x50' : '\xB0';
    return ModOf(burst, 1, patterns);
}

/// Two patterns that take no bytes.
Bytes MakeXm()
{
    const Bytes pattern = LittleEndian(4, {9}) + "\0\x40\0\0\0"s;
    return "Extended Module: " + Padded("song", 20) + "\x1A" + Padded("tracker", 20)
           + LittleEndian(2, {0x0104, 276, 0, 2, 0, 2, 2, 0, 1, 6, 125}) + "\0\1"s + Zeros(254)
           + pattern + pattern;
}

/// Two patterns that stand nowhere.
Bytes MakeS3m()
{
    return Padded("song", 28) + "\x1A\x10" + LittleEndian(2, {0, 2, 0, 2, 0, 0x1320, 1})
           + "SCRM\x40\6\x7D\xB0\x10" + Zeros(12) + Bytes(31, '\xFF') + "\0\1"s + Zeros(2 * 2);
}

/// As well.
Bytes MakeIt()
{
    return "IMPM" + Padded("song", 26) + LittleEndian(2, {0, 2, 0, 0, 2, 0x0214, 0x0200, 1, 0})
           + "\x80\x30\6\x7D\x80" + Zeros(11) + Bytes(64, '\x20') + Bytes(64, '\x40') + "\0\1"s
           + Zeros(2 * 4);
}

/// Two patterns of the empty track.
Bytes MakeMtm()
{
    return "MTM\x10" + Padded("song", 20) + "\0\0\1\1\0\0\0\0\x40\4"s + Bytes(32, '\x08') + "\0\1"s
           + Zeros(126 + 2 * 64);
}

/// An index as packages write it.
Bytes Index(std::size_t value, bool isNegative = false)
{
    Bytes index(1,
                static_cast<char>((isNegative ? 0x80U : 0U) | (value > 0x3F ? 0x40U : 0U)
                                  | (value & 0x3FU)));
    for (value >>= 6U; value > 0; value >>= 7U)
        index += static_cast<char>((value > 0x7F ? 0x80U : 0U) | (value & 0x7FU));
    return index;
}

/// A package of version 61: names end with a zero byte.
Bytes MakeUmx()
{
    constexpr std::size_t HeaderBytes = 64;
    const Bytes song = MakeMod();
    const Bytes object = Index(0) + Index(0) + Index(song.size()) + song;
    Bytes names;
    for (const std::string_view name : {"None", "Music", "Song", "Engine"})
        names += Padded(name, name.size() + 5);
    const Bytes imports = Index(3) + Index(1) + Zeros(4) + Index(1);
    const std::size_t importsAt = HeaderBytes + names.size();
    const std::size_t objectAt = importsAt + imports.size();
    const std::size_t exportsAt = objectAt + object.size();
    const Bytes exports = Index(1, true) + Index(0) + Zeros(4) + Index(2) + Zeros(4)
                          + Index(object.size()) + Index(objectAt);
    return LittleEndian(4, {0x9E2A83C1, 61, 0, 4, HeaderBytes, 1, exportsAt, 1, importsAt})
           + Zeros(HeaderBytes - 36) + names + imports + object + exports;
}

} // namespace

Bytes MakeToneModule(std::size_t rows)
{
    Bytes pattern = Note + Zeros(1020);
    pattern[16 * (rows - 1) + 6] = '\x0D'; // in the second channel: the pattern ends here
    Bytes cycle;
    for (int i = 0; i < 32; ++i)
        cycle += static_cast<char>(std::lround(100 * std::sin(std::numbers::pi / 16 * i)));
    return ModOf(cycle, 16, pattern);
}

std::map<std::string, Bytes> MakeModules()
{
    return {
        {"mod", MakeMod()},
        {"xm",  MakeXm() },
        {"s3m", MakeS3m()},
        {"it",  MakeIt() },
        {"mtm", MakeMtm()},
        {"umx", MakeUmx()}
    };
}

} // namespace velmo::test
