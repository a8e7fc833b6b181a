#include "SystemClock.h"

#include <ctime>

namespace velmo {

float SystemClock::SecondsSinceMidnight()
{
    constexpr int SecondsPerMinute = 60;
    constexpr int MinutesPerHour = 60;
    constexpr double NanosecondsPerSecond = 1e9;
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    std::tm local = {};
    ::localtime_r(&now.tv_sec, &local);
    const int minutes = local.tm_hour * MinutesPerHour + local.tm_min;
    const int seconds = minutes * SecondsPerMinute + local.tm_sec;
    return static_cast<float>(seconds + static_cast<double>(now.tv_nsec) / NanosecondsPerSecond);
}

} // namespace velmo
