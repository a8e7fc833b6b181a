/// Sound files made by programs: each needs its encoder installed.
#pragma once

#include "TestFiles.h"

#include <string>

namespace velmo::test {

/// A file of `Noise` that `command` of a shell makes. In it $in is a WAV file of 16 bits, $out
/// stands for the file to be written, whose name ends in `suffix`. A command without $in is a codec
/// of FFmpeg, and what else that is told. Throws what the program says where it fails.
Bytes Encode(const std::string& command, const std::string& suffix, const SoundShape& shape);

} // namespace velmo::test
