/// What every C function stands behind: the process's engine, and a guard that lets no exception
/// out and sets the calling thread's code.
#pragma once

#include "Engine.h"
#include "bass.h"

#include <utility>

namespace velmo::engine {

/// The engine behind the functions. It's made by the first call that needs it, so that opening the
/// library costs nothing, and never destroyed: the process may end while a channel plays, and then
/// threads still use it. Any thread.
Engine& TheEngine();

/// Has the end of the process end decoding before libraries that are mapped from now on are taken
/// down. Any thread; once is enough.
void EndDecodingAtExit() noexcept;

/// What `BASS_ErrorGetCode` gives on this thread.
int LastError() noexcept;
void SetLastError(int code) noexcept;

/// What `operation` gives, a code. What it throws is want of memory.
template<class Operation>
int Guarded(Operation operation) noexcept
{
    int code = BASS_ERROR_UNKNOWN;
    try {
        code = operation();
    } catch (...) {
        code = BASS_ERROR_UNKNOWN;
    }
    SetLastError(code);
    return code;
}

template<class Operation>
BOOL Succeeds(Operation operation) noexcept
{
    return Guarded(std::move(operation)) == BASS_OK ? 1 : 0;
}

} // namespace velmo::engine
