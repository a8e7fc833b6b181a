#include "Guarded.h"

#include <atomic>
#include <cstdlib>
#include <memory>

namespace velmo::engine {

namespace {

// A thread's code; the functions have no other place to keep it.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local int lastError = BASS_OK;

// A C interface without a context argument needs an engine for the process.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): see above
constinit std::atomic<Engine*> theEngine = nullptr;
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): once in a process
constinit std::atomic_flag endsAtExit;

/// Runs before the decoding libraries that this one is linked with are taken down at the end of the
/// process.
__attribute__((destructor)) void EndOfProcess()
{
    if (Engine* const engine = theEngine.load(std::memory_order_acquire))
        engine->Quiesce();
}

} // namespace

Engine& TheEngine()
{
    Engine* engine = theEngine.load(std::memory_order_acquire);
    if (engine != nullptr)
        return *engine;
    auto made = std::make_unique<Engine>();
    if (theEngine.compare_exchange_strong(engine, made.get(), std::memory_order_acq_rel))
        engine = made.release();
    return *engine;
}

// What is mapped later is taken down earlier, but all that `atexit` was told comes before.
void EndDecodingAtExit() noexcept
{
    if (!endsAtExit.test_and_set() && std::atexit(&EndOfProcess) != 0)
        endsAtExit.clear();
}

int LastError() noexcept
{
    return lastError;
}

void SetLastError(int code) noexcept
{
    lastError = code;
}

} // namespace velmo::engine
