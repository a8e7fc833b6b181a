#include "Cascade.h"

namespace velmo::fx {

RunCascade FastestCascade() noexcept
{
#if defined(__x86_64__)
    // The builtins fill their table in a constructor that may come later than the caller's.
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return RunCascade8;
#endif
    return RunCascade4;
}

} // namespace velmo::fx
