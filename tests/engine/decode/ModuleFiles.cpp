/// The modules, byte by byte. All hold the same song: one sample, two patterns, a note on every
/// 16th row.
#include "TestFiles.h"

#include <array>

namespace velmo::test {
namespace {

constexpr std::size_t Rows = 64;
constexpr std::size_t NoteDistance = 16;
constexpr std::size_t SampleBytes = 400;

/// Bytes in the making.
class Writer
{
public:
    Writer& Byte(std::size_t value)
    {
        m_bytes.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    Writer& Little(std::size_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            Byte(value >> (8U * static_cast<unsigned>(i)) & 0xFFU);
        return *this;
    }
    Writer& Big16(std::size_t value) { return Byte(value >> 8U).Byte(value & 0xFFU); }
    Writer& Text(std::string_view text, std::size_t width)
    {
        for (std::size_t i = 0; i < width; ++i)
            Byte(i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U);
        return *this;
    }
    Writer& Zeros(std::size_t count) { return Repeat(0, count); }
    Writer& Repeat(std::size_t value, std::size_t count)
    {
        m_bytes.resize(m_bytes.size() + count, static_cast<std::uint8_t>(value));
        return *this;
    }
    Writer& Append(const Bytes& bytes)
    {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }
    std::size_t Size() const { return m_bytes.size(); }
    Bytes Take() const { return m_bytes; }

private:
    Bytes m_bytes;
};

/// One short burst, signed 8 bits: a square wave.
Bytes Sample()
{
    Bytes bytes(SampleBytes);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = i / 16 % 2 == 0 ? 0x50 : 0xB0;
    return bytes;
}

bool HasNote(std::size_t row)
{
    return row % NoteDistance == 0;
}

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
        w.Byte(HasNote(row) ? Period >> 8U : 0U).Byte(HasNote(row) ? Period & 0xFFU : 0U);
        w.Byte(HasNote(row) ? 0x10U : 0U).Byte(0).Zeros(12);
    }
    return w.Append(Sample()).Take();
}

Bytes MakeXm()
{
    Writer w;
    w.Text("Extended Module: ", 17).Text("song", 20).Byte(0x1A).Text("tracker", 20);
    w.Little(0x0104, 2).Little(276, 4).Little(2, 2).Little(0, 2).Little(2, 2).Little(2, 2);
    w.Little(1, 2).Little(1, 2).Little(6, 2).Little(125, 2).Byte(0).Byte(1).Zeros(254);
    for (int pattern = 0; pattern < 2; ++pattern) {
        Writer rows;
        for (std::size_t row = 0; row < Rows; ++row) {
            if (HasNote(row))
                rows.Byte(0x83).Byte(49).Byte(1);
            else
                rows.Byte(0x80);
            rows.Byte(0x80);
        }
        w.Little(9, 4).Byte(0).Little(Rows, 2).Little(rows.Size(), 2).Append(rows.Take());
    }
    w.Little(263, 4).Text("burst", 22).Byte(0).Little(1, 2).Little(40, 4).Zeros(96 + 96);
    w.Zeros(14).Little(0, 2).Zeros(22);
    w.Little(SampleBytes, 4).Zeros(8).Byte(64).Byte(0).Byte(0).Byte(128).Byte(0).Byte(0);
    w.Text("burst", 22);
    std::uint8_t last = 0;
    for (const std::uint8_t value : Sample()) {
        w.Byte(static_cast<std::uint8_t>(value - last));
        last = value;
    }
    return w.Take();
}

/// Rows as S3M and IT pack them alike; `notes` are the bytes of one, on channel 1.
Writer PackedRows(const Bytes& note)
{
    Writer rows;
    for (std::size_t row = 0; row < Rows; ++row) {
        if (HasNote(row))
            rows.Append(note);
        rows.Byte(0);
    }
    return rows;
}

Bytes MakeS3m()
{
    constexpr std::size_t HeaderBytes = 0x60 + 2 + 2 + 4;
    constexpr std::size_t InstrumentAt = 0x70;
    const Writer rows = PackedRows({0x20, 0x40, 1});
    const std::size_t patternBytes = (rows.Size() + 2 + 15) / 16 * 16;
    constexpr std::size_t PatternAt = InstrumentAt + 0x50;
    const std::size_t sampleAt = PatternAt + 2 * patternBytes;
    Writer w;
    w.Text("song", 28).Byte(0x1A).Byte(16).Zeros(2).Little(2, 2).Little(1, 2).Little(2, 2);
    w.Little(0, 2).Little(0x1320, 2).Little(1, 2).Text("SCRM", 4).Byte(64).Byte(6).Byte(125);
    w.Byte(0xB0).Byte(16).Byte(0).Zeros(8).Little(0, 2).Byte(0).Repeat(0xFF, 31);
    w.Byte(0).Byte(1).Little(InstrumentAt / 16, 2);
    w.Little(PatternAt / 16, 2).Little((PatternAt + patternBytes) / 16, 2);
    w.Zeros(InstrumentAt - HeaderBytes);
    w.Byte(1).Text("burst", 12).Byte(sampleAt / 16 >> 16U).Little(sampleAt / 16 & 0xFFFFU, 2);
    w.Little(SampleBytes, 4).Zeros(8).Byte(64).Zeros(3).Little(8363, 4).Zeros(12).Text("burst", 28);
    w.Text("SCRS", 4);
    for (int pattern = 0; pattern < 2; ++pattern)
        w.Little(rows.Size() + 2, 2).Append(rows.Take()).Zeros(patternBytes - rows.Size() - 2);
    return w.Append(Sample()).Take();
}

Bytes MakeIt()
{
    constexpr std::size_t SampleHeaderAt = 192 + 2 + 4 + 8;
    constexpr std::size_t PatternAt = SampleHeaderAt + 80;
    const Writer rows = PackedRows({0x81, 0x03, 60, 1});
    const std::size_t patternBytes = 8 + rows.Size();
    Writer w;
    w.Text("IMPM", 4).Text("song", 26).Little(0, 2).Little(2, 2).Little(0, 2).Little(1, 2);
    w.Little(2, 2).Little(0x0214, 2).Little(0x0200, 2).Little(1, 2).Little(0, 2);
    w.Byte(128).Byte(48).Byte(6).Byte(125).Byte(128).Byte(0).Little(0, 2).Little(0, 4).Little(0, 4);
    w.Repeat(32, 64).Repeat(64, 64).Byte(0).Byte(1).Little(SampleHeaderAt, 4);
    w.Little(PatternAt, 4).Little(PatternAt + patternBytes, 4);
    w.Text("IMPS", 4).Text("burst", 12).Byte(0).Byte(64).Byte(1).Byte(64).Text("burst", 26);
    w.Byte(1).Byte(0).Little(SampleBytes, 4).Zeros(8).Little(8363, 4).Zeros(8);
    w.Little(PatternAt + 2 * patternBytes, 4).Zeros(4);
    for (int pattern = 0; pattern < 2; ++pattern)
        w.Little(rows.Size(), 2).Little(Rows, 2).Zeros(4).Append(rows.Take());
    return w.Append(Sample()).Take();
}

Bytes MakeMtm()
{
    Writer w;
    w.Text("MTM", 3).Byte(0x10).Text("song", 20).Little(1, 2).Byte(1).Byte(1).Little(0, 2);
    w.Byte(1).Byte(0).Byte(Rows).Byte(4).Repeat(8, 32);
    w.Text("burst", 22).Little(SampleBytes, 4).Zeros(8).Byte(0).Byte(64).Byte(0);
    w.Byte(0).Byte(1).Zeros(126);
    for (std::size_t row = 0; row < Rows; ++row)
        w.Byte(HasNote(row) ? 36U << 2U : 0U).Byte(HasNote(row) ? 0x10U : 0U).Byte(0);
    for (int pattern = 0; pattern < 2; ++pattern)
        w.Little(1, 2).Zeros(std::size_t{62});
    for (const std::uint8_t value : Sample())
        w.Byte(value ^ 0x80U);
    return w.Take();
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

Bytes MakeModule(ModuleFormat format)
{
    switch (format) {
    case ModuleFormat::Mod: return MakeMod();
    case ModuleFormat::Xm: return MakeXm();
    case ModuleFormat::S3m: return MakeS3m();
    case ModuleFormat::It: return MakeIt();
    case ModuleFormat::Mtm: return MakeMtm();
    case ModuleFormat::Umx: break;
    }
    return MakeUmx();
}

} // namespace velmo::test
