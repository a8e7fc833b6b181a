#include "EncodedFiles.h"

#include <sndfile.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace velmo::test {
namespace {

Bytes ReadBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Bytes EncodeWav(const Bytes& wav, const std::string& command, const std::string& suffix)
{
    const TemporaryFolder folder;
    const std::string out = folder.Path("out" + suffix);
    const std::string said = folder.Path("said");
    const std::string line = "in='" + folder.Write("in.wav", wav) + "'; out='" + out + "'; { "
                             + command + "; } >'" + said + "' 2>&1 </dev/null";
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): a program that tests alone run
    if (std::system(line.c_str()) != 0) {
        const Bytes text = ReadBytes(said);
        throw std::runtime_error(command + ": " + std::string(text.begin(), text.end()));
    }
    return ReadBytes(out);
}

int WavFormat(const SoundShape& shape)
{
    // More than two channels have places only in the extended header.
    return shape.channels > 2 ? SF_FORMAT_WAVEX : SF_FORMAT_WAV;
}

} // namespace

Bytes Encode(const std::string& command, const std::string& suffix, const SoundShape& shape)
{
    return EncodeWav(MakeSndfile(WavFormat(shape) | SF_FORMAT_PCM_16, shape), command, suffix);
}

Bytes EncodeFloats(const std::string& command, const std::string& suffix, const SoundShape& shape)
{
    return EncodeWav(MakeSndfile(WavFormat(shape) | SF_FORMAT_FLOAT, shape), command, suffix);
}

} // namespace velmo::test
