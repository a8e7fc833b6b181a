#pragma once

#include <string>
#include <thread>

namespace velmo {

/// Maps a library while the main thread waits for the window system, so that opening it later takes
/// no time. Whether it can be opened is not told: the real opening finds out. The thread ends by
/// itself; destroying this waits for it.
class LibraryWarmUp
{
public:
    explicit LibraryWarmUp(const std::string& path);

private:
    std::jthread m_thread;
};

} // namespace velmo
