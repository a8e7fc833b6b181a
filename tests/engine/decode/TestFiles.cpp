#include "TestFiles.h"

#include <lame/lame.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <numbers>
#include <stdexcept>

/// Read by the leak detector, where there is one: the encoder of Vorbis, which only tests use,
/// keeps some of its set-up, and the decoder eight bytes of a file that it refuses.
extern "C" __attribute__((visibility("default"))) const char*
__lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier,cert-*,readability-identifier-naming):
                              // its name
{
    return "leak:vorbis_encode_setup_init\nleak:libvorbisfile.so\n";
}

namespace velmo::test {
namespace {

struct MemoryFile
{
    Bytes bytes;
    std::size_t position = 0;
};

MemoryFile& Of(void* user)
{
    return *static_cast<MemoryFile*>(user);
}

sf_count_t MemorySize(void* user)
{
    return static_cast<sf_count_t>(Of(user).bytes.size());
}

sf_count_t MemorySeek(sf_count_t offset, int whence, void* user)
{
    const sf_count_t base = whence == SEEK_SET   ? 0
                            : whence == SEEK_CUR ? static_cast<sf_count_t>(Of(user).position)
                                                 : MemorySize(user);
    Of(user).position = static_cast<std::size_t>(base + offset);
    return base + offset;
}

sf_count_t MemoryRead(void*, sf_count_t, void*)
{
    return 0;
}

sf_count_t MemoryWrite(const void* data, sf_count_t count, void* user)
{
    MemoryFile& file = Of(user);
    const std::span bytes(static_cast<const std::uint8_t*>(data), static_cast<std::size_t>(count));
    file.bytes.resize(std::max(file.bytes.size(), file.position + bytes.size()));
    std::ranges::copy(bytes, file.bytes.begin() + static_cast<std::ptrdiff_t>(file.position));
    file.position += bytes.size();
    return count;
}

sf_count_t MemoryTell(void* user)
{
    return static_cast<sf_count_t>(Of(user).position);
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velmo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::Path(std::string_view name) const
{
    return (m_path / name).string();
}

std::string TemporaryFolder::Write(std::string_view name, std::span<const std::uint8_t> bytes) const
{
    std::ofstream file(Path(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return Path(name);
}

std::vector<float> Noise(std::size_t frames, std::uint32_t channels)
{
    std::vector<float> samples(frames * channels);
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        random = random * 1664525U + 1013904223U;
        const double step = 0.02 * static_cast<double>(i % channels + 1);
        const double tone = std::sin(step * std::floor(static_cast<double>(i) / channels));
        const double noise = static_cast<double>(random >> 8U) / (1U << 23U) - 1.0;
        samples[i] = static_cast<float>(0.4 * tone + 0.1 * noise);
    }
    return samples;
}

Bytes MakeSndfile(int sndfileFormat, const SoundShape& shape)
{
    SF_VIRTUAL_IO io = {.get_filelen = &MemorySize,
                        .seek = &MemorySeek,
                        .read = &MemoryRead,
                        .write = &MemoryWrite,
                        .tell = &MemoryTell};
    SF_INFO info = {};
    info.samplerate = static_cast<int>(shape.sampleRate);
    info.channels = static_cast<int>(shape.channels);
    info.format = sndfileFormat;
    MemoryFile memory;
    SNDFILE* const file = sf_open_virtual(&io, SFM_WRITE, &info, &memory);
    if (file == nullptr)
        throw std::runtime_error(sf_strerror(nullptr));
    const std::vector<float> samples = Noise(shape.frames, shape.channels);
    // In pieces: the encoder of Vorbis keeps each piece on its stack.
    constexpr std::size_t Piece = 1024;
    for (std::size_t done = 0; done < shape.frames; done += Piece)
        sf_writef_float(file,
                        samples.data() + done * shape.channels,
                        static_cast<sf_count_t>(std::min(Piece, shape.frames - done)));
    sf_close(file);
    return memory.bytes;
}

Bytes MakeMp3(Mp3Mode mode, const SoundShape& shape)
{
    const std::unique_ptr<lame_global_flags, int (*)(lame_global_flags*)> lame(lame_init(),
                                                                               &lame_close);
    const bool isPlain = mode == Mp3Mode::ConstantPlain || mode == Mp3Mode::VariablePlain;
    const bool isVariable = mode == Mp3Mode::Variable || mode == Mp3Mode::VariablePlain;
    lame_set_in_samplerate(lame.get(), static_cast<int>(shape.sampleRate));
    lame_set_out_samplerate(lame.get(), static_cast<int>(shape.sampleRate));
    lame_set_num_channels(lame.get(), static_cast<int>(shape.channels));
    lame_set_mode(lame.get(), shape.channels == 1 ? MONO : JOINT_STEREO);
    lame_set_bWriteVbrTag(lame.get(), isPlain ? 0 : 1);
    lame_set_VBR(lame.get(), isVariable ? vbr_mtrh : vbr_off);
    lame_set_brate(lame.get(), 128); // frames of a lower rate have no room for the Info header
    lame_set_quality(lame.get(), 9);
    if (lame_init_params(lame.get()) < 0)
        throw std::runtime_error("lame");
    std::vector<float> samples = Noise(shape.frames, shape.channels);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] *= (i / 50000) % 2 == 0 ? 1.0f : 0.001f;
    Bytes bytes(samples.size() * 2 + 20000);
    const int frames = static_cast<int>(shape.frames);
    const int room = static_cast<int>(bytes.size());
    const int body = shape.channels == 1
                         ? lame_encode_buffer_ieee_float(
                             lame.get(), samples.data(), samples.data(), frames, bytes.data(), room)
                         : lame_encode_buffer_interleaved_ieee_float(
                             lame.get(), samples.data(), frames, bytes.data(), room);
    const int rest = lame_encode_flush(lame.get(), bytes.data() + body, room - body);
    bytes.resize(static_cast<std::size_t>(body) + static_cast<std::size_t>(rest));
    // The encoder has left room for the header at the front.
    lame_get_lametag_frame(lame.get(), bytes.data(), isPlain ? 0 : bytes.size());
    return bytes;
}

Bytes MakeSilentMpeg(int layer, std::size_t count)
{
    // Bit allocations of zero: no band has samples. Layer 1 at 384 kbit/s, 416 bytes; layer 2 at
    // 128 kbit/s, 417 bytes.
    Bytes frame(layer == 1 ? 416 : 417);
    frame[0] = 0xFF;
    frame[1] = layer == 1 ? 0xFF : 0xFD;
    frame[2] = layer == 1 ? 0xC0 : 0x80;
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes = Join(std::move(bytes), frame);
    return bytes;
}

Bytes MakeId3v2(std::size_t bytes, std::uint8_t filler)
{
    Bytes tag(bytes, filler);
    const std::size_t size = bytes - 10;
    const Bytes header = {'I',
                          'D',
                          '3',
                          4,
                          0,
                          0,
                          static_cast<std::uint8_t>(size >> 21U & 0x7FU),
                          static_cast<std::uint8_t>(size >> 14U & 0x7FU),
                          static_cast<std::uint8_t>(size >> 7U & 0x7FU),
                          static_cast<std::uint8_t>(size & 0x7FU)};
    std::ranges::copy(header, tag.begin());
    return tag;
}

Bytes Join(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes First(const Bytes& bytes, std::size_t count)
{
    return {bytes.begin(),
            bytes.begin() + static_cast<std::ptrdiff_t>(std::min(count, bytes.size()))};
}

} // namespace velmo::test
