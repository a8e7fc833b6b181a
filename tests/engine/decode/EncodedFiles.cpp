#include "EncodedFiles.h"

#include "support/TempDir.h"

#include <sndfile.h>

#include <cstdlib>
#include <stdexcept>

namespace velmo::test {

Bytes Encode(const std::string& command, const std::string& suffix, const SoundShape& shape)
{
    if (command.find("$in") == std::string::npos)
        return Encode("ffmpeg -nostdin -v error -i $in -c:a " + command + " $out", suffix, shape);
    // More than two channels have places only in the extended header.
    const int container = shape.channels > 2 ? SF_FORMAT_WAVEX : SF_FORMAT_WAV;
    const TempDir folder;
    folder.Write("in.wav", MakeSndfile(container | SF_FORMAT_PCM_16, shape));
    const std::string line = "cd '" + folder() + "' && in=in.wav && out=out" + suffix + " && { "
                             + command + "; } >said 2>&1 </dev/null";
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): a program that tests alone run
    if (std::system(line.c_str()) != 0)
        throw std::runtime_error(command + ": " + folder.Read("said"));
    return folder.Read("out" + suffix);
}

} // namespace velmo::test
