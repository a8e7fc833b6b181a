#pragma once

#include <cstddef>
#include <vector>

namespace velmo::test {

/// When a tone was heard: from, and for how long, in seconds. To about 0.05 s.
struct Heard
{
    std::size_t tone = 0; ///< index of the pitch
    double from = 0;
    double seconds = 0;
    double lowest = 0;  ///< least level while it was heard, but for its first and last moment
    double highest = 0; ///< greatest level

    double End() const { return from + seconds; }
};

/// Every stretch of sound of one of the pitches, by its beginning. `samples` are interleaved
/// stereo.
std::vector<Heard> FindTones(const std::vector<float>& samples,
                             double sampleRate,
                             const std::vector<double>& pitches);

} // namespace velmo::test
