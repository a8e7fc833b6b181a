/// The modules, byte by byte.
#include "TestFiles.h"

#include <string_view>

namespace velmo::test {
namespace {

constexpr std::size_t Rows = 64;
constexpr std::size_t NoteDistance = 16;
constexpr std::size_t SampleBytes = 400;

/// Bytes in the making.
class Writer
{
public:
    Writer& Byte(std::size_t value) { return Repeat(value, 1); }
    Writer& Little(std::size_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            Byte(value >> (8U * static_cast<unsigned>(i)));
        return *this;
    }
    Writer& Big16(std::size_t value) { return Byte(value >> 8U).Byte(value & 0xFFU); }
    Writer& Text(std::string_view text, std::size_t width)
    {
        m_bytes += text;
        return Zeros(width - text.size());
    }
    Writer& Zeros(std::size_t count) { return Repeat(0, count); }
    Writer& Repeat(std::size_t value, std::size_t count)
    {
        m_bytes.append(count, static_cast<char>(value & 0xFFU));
        return *this;
    }
    Writer& Append(const Bytes& bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    std::size_t Size() const { return m_bytes.size(); }
    Bytes Take() const { return m_bytes; }

private:
    Bytes m_bytes;
};

/// With a short burst, a square wave of signed 8 bits, for its notes.
Bytes MakeMod()
{
    Writer w;
    w.Text("song", 20);
    w.Text("burst", 22).Big16(SampleBytes / 2).Byte(0).Byte(64).Big16(0).Big16(1);
    for (int sample = 2; sample <= 31; ++sample)
        w.Zeros(22).Big16(0).Byte(0).Byte(0).Big16(0).Big16(1);
    w.Byte(2).Byte(127).Byte(0).Byte(1).Zeros(126).Text("M.K.", 4);
    for (std::size_t row = 0; row < 2 * Rows; ++row) {
        constexpr std::size_t Period = 428;
        const bool hasNote = row % NoteDistance == 0;
        w.Big16(hasNote ? Period : 0U).Byte(hasNote ? 0x10U : 0U).Byte(0).Zeros(12);
    }
    for (std::size_t i = 0; i < SampleBytes; ++i)
        w.Byte(i / 16 % 2 == 0 ? 0x50 : 0xB0);
    return w.Take();
}

/// Two patterns that take no bytes.
Bytes MakeXm()
{
    Writer w;
    w.Text("Extended Module: ", 17).Text("song", 20).Byte(0x1A).Text("tracker", 20);
    w.Little(0x0104, 2).Little(276, 4).Little(2, 2).Little(0, 2).Little(2, 2).Little(2, 2);
    w.Little(0, 2).Little(1, 2).Little(6, 2).Little(125, 2).Byte(0).Byte(1).Zeros(254);
    for (int pattern = 0; pattern < 2; ++pattern)
        w.Little(9, 4).Byte(0).Little(Rows, 2).Little(0, 2);
    return w.Take();
}

/// Two patterns that stand nowhere.
Bytes MakeS3m()
{
    Writer w;
    w.Text("song", 28).Byte(0x1A).Byte(16).Zeros(2).Little(2, 2).Little(0, 2).Little(2, 2);
    w.Little(0, 2).Little(0x1320, 2).Little(1, 2).Text("SCRM", 4).Byte(64).Byte(6).Byte(125);
    w.Byte(0xB0).Byte(16).Byte(0).Zeros(8).Little(0, 2).Byte(0).Repeat(0xFF, 31);
    return w.Byte(0).Byte(1).Zeros(2 * 2).Take();
}

/// As well.
Bytes MakeIt()
{
    Writer w;
    w.Text("IMPM", 4).Text("song", 26).Little(0, 2).Little(2, 2).Little(0, 2).Little(0, 2);
    w.Little(2, 2).Little(0x0214, 2).Little(0x0200, 2).Little(1, 2).Little(0, 2);
    w.Byte(128).Byte(48).Byte(6).Byte(125).Byte(128).Byte(0).Little(0, 2).Little(0, 4).Little(0, 4);
    return w.Repeat(32, 64).Repeat(64, 64).Byte(0).Byte(1).Zeros(2 * 4).Take();
}

/// Two patterns of the empty track.
Bytes MakeMtm()
{
    Writer w;
    w.Text("MTM", 3).Byte(0x10).Text("song", 20).Little(0, 2).Byte(1).Byte(1).Little(0, 2);
    w.Byte(0).Byte(0).Byte(Rows).Byte(4).Repeat(8, 32);
    return w.Byte(0).Byte(1).Zeros(126).Zeros(2 * 64).Take();
}

/// An index as packages write it.
void Index(Writer& w, std::size_t value, bool isNegative = false)
{
    w.Byte((isNegative ? 0x80U : 0U) | (value > 0x3F ? 0x40U : 0U) | (value & 0x3FU));
    for (value >>= 6U; value > 0; value >>= 7U)
        w.Byte((value > 0x7F ? 0x80U : 0U) | (value & 0x7FU));
}

/// A package of version 61: names end with a zero byte.
Bytes MakeUmx()
{
    constexpr std::size_t HeaderBytes = 64;
    const Bytes song = MakeMod();
    Writer object;
    Index(object, 0);
    Index(object, 0);
    Index(object, song.size());
    object.Append(song);
    Writer names;
    for (const std::string_view name : {"None", "Music", "Song", "Engine"})
        names.Text(name, name.size() + 1).Little(0, 4);
    Writer imports;
    for (const std::size_t name : {3U, 1U})
        Index(imports, name);
    imports.Little(0, 4);
    Index(imports, 1);
    const std::size_t objectAt = HeaderBytes + names.Size() + imports.Size();
    Writer exports;
    Index(exports, 1, true);
    Index(exports, 0);
    exports.Little(0, 4);
    Index(exports, 2);
    exports.Little(0, 4);
    Index(exports, object.Size());
    Index(exports, objectAt);
    Writer w;
    w.Little(0x9E2A83C1, 4).Little(61, 2).Little(0, 2).Little(0, 4);
    w.Little(4, 4).Little(HeaderBytes, 4);
    w.Little(1, 4).Little(objectAt + object.Size(), 4);
    w.Little(1, 4).Little(HeaderBytes + names.Size(), 4).Zeros(HeaderBytes - 36);
    w.Append(names.Take()).Append(imports.Take()).Append(object.Take()).Append(exports.Take());
    return w.Take();
}

} // namespace

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
