#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace velmo::bench {

/// Seconds that `work` takes.
inline double Seconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Medians of two works that are measured in turns, so that what else the machine does falls on
/// both alike.
struct Pair
{
    double ours = 0;
    double yardstick = 0;
};

inline Pair InTurns(int rounds,
                    const std::function<double()>& ours,
                    const std::function<double()>& yardstick)
{
    std::vector<double> a;
    std::vector<double> b;
    for (int round = 0; round < rounds; ++round) {
        b.push_back(yardstick());
        a.push_back(ours());
    }
    return {.ours = Median(a), .yardstick = Median(b)};
}

/// One line of the table.
inline void Row(const std::string& figure,
                const std::string& measured,
                const std::string& bar,
                bool met)
{
    std::printf("| %s | %s | %s | %s |\n",
                figure.c_str(),
                measured.c_str(),
                bar.c_str(),
                met ? "yes" : "NO");
    std::fflush(stdout);
}

inline std::string Text(const char* pattern, double value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, pattern, value);
    return buffer;
}

} // namespace velmo::bench
