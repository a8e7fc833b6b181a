#pragma once

#include "bass/modBass.h"

#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// A file that the fake library can open.
struct FakeSound
{
    double seconds = 0;
    bool isModule = false;
};

/// A sound library that plays nothing: files are entries of a table, time passes when the test says
/// so, and every call is written down. One at a time, since the library's functions carry no
/// address of theirs.
class FakeBass
{
public:
    FakeBass();
    ~FakeBass();
    FakeBass(const FakeBass&) = delete;
    FakeBass& operator=(const FakeBass&) = delete;

    /// A table whose functions act on this.
    modBass Table() const;

    /// Lets that much time pass for all that plays.
    void Advance(double seconds);

    std::map<std::string, FakeSound> sounds; ///< by path
    std::vector<std::string> calls;          ///< in order, with the arguments that matter
    DWORD version = 0x02040000;
    bool initSucceeds = true;

    struct Channel
    {
        std::string path;
        double seconds = 0;
        double position = 0;
        DWORD state = BASS_ACTIVE_STOPPED;
        bool isModule = false;
        DWORD flags = 0;
    };
    std::map<DWORD, Channel> channels; ///< those that are open

    DWORD nextHandle = 101; ///< handles are never used twice

    static constexpr double BytesPerSecond = 44100 * 4;
};

} // namespace velmo::test
