#include "SystemClock.h"

#include <array>
#include <ctime>

namespace velmo {

namespace {

struct LocalTime
{
    std::tm parts = {};
    long nanoseconds = 0;
};

LocalTime Now()
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    LocalTime local{.nanoseconds = now.tv_nsec};
    ::localtime_r(&now.tv_sec, &local.parts);
    return local;
}

/// `pattern` holds numbers only, which no locale writes otherwise.
std::string Formatted(const char* pattern)
{
    std::array<char, 32> text{};
    const std::tm parts = Now().parts;
    return {text.data(), std::strftime(text.data(), text.size(), pattern, &parts)};
}

} // namespace

std::string SystemClock::DateText()
{
    return Formatted("%m-%d-%Y");
}

std::string SystemClock::TimeText()
{
    return Formatted("%H:%M:%S");
}

float SystemClock::SecondsSinceMidnight()
{
    constexpr int SecondsPerMinute = 60;
    constexpr int MinutesPerHour = 60;
    constexpr double NanosecondsPerSecond = 1e9;
    const LocalTime now = Now();
    const int minutes = now.parts.tm_hour * MinutesPerHour + now.parts.tm_min;
    const int seconds = minutes * SecondsPerMinute + now.parts.tm_sec;
    return static_cast<float>(seconds
                              + static_cast<double>(now.nanoseconds) / NanosecondsPerSecond);
}

} // namespace velmo
