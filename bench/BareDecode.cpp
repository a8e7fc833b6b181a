#include "BareDecode.h"

#include <libopenmpt/libopenmpt.h>
#include <mpg123.h>
#include <sndfile.h>
#include <vorbis/vorbisfile.h>

#include <array>
#include <fstream>
#include <iterator>
#include <vector>

namespace velmo::bench {

namespace {

constexpr std::size_t BlockFrames = 4096;
constexpr long Rate = 44100;

std::uint64_t DecodeMp3(const std::string& path, std::uint64_t limit)
{
    mpg123_handle* handle = mpg123_new(nullptr, nullptr);
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_FORCE_FLOAT | MPG123_QUIET | MPG123_GAPLESS, 0);
    mpg123_open(handle, path.c_str());
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    mpg123_getformat(handle, &rate, &channels, &encoding);
    std::vector<float> block(BlockFrames * 2);
    std::uint64_t frames = 0;
    std::size_t done = 1;
    while (done > 0 && frames < limit) {
        mpg123_read(handle,
                    reinterpret_cast<unsigned char*>(block.data()),
                    block.size() * sizeof(float),
                    &done);
        frames += done / (sizeof(float) * static_cast<std::size_t>(channels));
    }
    mpg123_delete(handle);
    return frames;
}

std::uint64_t DecodeOgg(const std::string& path, std::uint64_t limit)
{
    OggVorbis_File file;
    if (ov_fopen(path.c_str(), &file) != 0)
        return 0;
    float** planes = nullptr;
    int section = 0;
    std::uint64_t frames = 0;
    long got = 1;
    while (got > 0 && frames < limit) {
        got = ov_read_float(&file, &planes, static_cast<int>(BlockFrames), &section);
        frames += got > 0 ? static_cast<std::uint64_t>(got) : 0;
    }
    ov_clear(&file);
    return frames;
}

std::uint64_t DecodeWav(const std::string& path, std::uint64_t limit)
{
    SF_INFO info = {};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    std::vector<float> block(BlockFrames * 2);
    std::uint64_t frames = 0;
    sf_count_t got = 1;
    while (got > 0 && frames < limit) {
        got = sf_readf_float(file, block.data(), static_cast<sf_count_t>(BlockFrames));
        frames += static_cast<std::uint64_t>(got);
    }
    sf_close(file);
    return frames;
}

std::uint64_t DecodeModule(const std::string& path, std::uint64_t limit)
{
    std::ifstream stream(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    openmpt_module* module = openmpt_module_create_from_memory2(bytes.data(),
                                                                bytes.size(),
                                                                openmpt_log_func_silent,
                                                                nullptr,
                                                                nullptr,
                                                                nullptr,
                                                                nullptr,
                                                                nullptr,
                                                                nullptr);
    std::vector<float> block(BlockFrames * 2);
    std::uint64_t frames = 0;
    std::size_t got = 1;
    while (got > 0 && frames < limit) {
        got = openmpt_module_read_interleaved_float_stereo(module, Rate, BlockFrames, block.data());
        frames += got;
    }
    openmpt_module_destroy(module);
    return frames;
}

} // namespace

std::uint64_t BareDecode(const std::string& path, double seconds)
{
    const auto limit = static_cast<std::uint64_t>(seconds * static_cast<double>(Rate));
    if (path.ends_with("mp3"))
        return DecodeMp3(path, limit);
    if (path.ends_with("ogg"))
        return DecodeOgg(path, limit);
    if (path.ends_with("wav"))
        return DecodeWav(path, limit);
    return DecodeModule(path, limit);
}

} // namespace velmo::bench
