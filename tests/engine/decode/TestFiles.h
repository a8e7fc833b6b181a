/// Sound files made for tests: each function gives the bytes of one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::test {

using Bytes = std::vector<std::uint8_t>;

/// A folder of a test's own, removed with all that is in it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// Path of `name` in the folder.
    std::string Path(std::string_view name) const;

    /// Writes a file there; gives its path.
    std::string Write(std::string_view name, std::span<const std::uint8_t> bytes) const;

private:
    std::filesystem::path m_path;
};

/// `frames` interleaved frames of tones and some noise, different in every channel, at half of full
/// scale; always the same.
std::vector<float> Noise(std::size_t frames, std::uint32_t channels);

struct SoundShape
{
    std::size_t frames = 44100;
    std::uint32_t channels = 2;
    std::uint32_t sampleRate = 44100;
};

/// A file of `Noise` in the container and encoding of `sndfileFormat` (SF_FORMAT_ numbers).
Bytes MakeSndfile(int sndfileFormat, const SoundShape& shape = {});

enum class Mp3Mode
{
    Constant,      ///< constant bit rate, with an Info header
    ConstantPlain, ///< constant bit rate, no header
    Variable,      ///< variable bit rate, with a Xing header
    VariablePlain  ///< variable bit rate, no header
};

/// `Noise`, louder and softer, as an MP3 file.
Bytes MakeMp3(Mp3Mode mode, const SoundShape& shape = {});

/// `count` silent frames of MPEG 1 layer `layer` (1 or 2), 44.1 kHz stereo.
Bytes MakeSilentMpeg(int layer, std::size_t count);

/// An ID3v2 tag of `bytes` bytes in all, filled with `filler`.
Bytes MakeId3v2(std::size_t bytes, std::uint8_t filler = 0);

enum class ModuleFormat
{
    Mod,
    Xm,
    S3m,
    It,
    Mtm,
    Umx ///< with a MOD inside
};

/// A song of two patterns of 64 rows at 125 beats and 6 ticks, 15.36 s; a note on every 16th row.
Bytes MakeModule(ModuleFormat format);

/// `first` and behind it `second`.
Bytes Join(Bytes first, const Bytes& second);

/// The first `count` bytes.
Bytes First(const Bytes& bytes, std::size_t count);

} // namespace velmo::test
