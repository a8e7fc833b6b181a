#include "EventEntry.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

namespace velmo::controls {

namespace {

void Report(const char* text)
{
    std::string line = std::string("velmo: ") + text;
    // One failure is one line, also with a text that has line ends in it.
    const auto isControl = [](char c) { return c >= 0 && c < ' '; };
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    line += '\n';
    static_cast<void>(std::fputs(line.c_str(), stderr)); // there is nowhere else to complain
}

} // namespace

void RunEvent(const std::function<void()>& handler) noexcept
{
    try {
        handler();
    } catch (const std::exception& failure) {
        Report(failure.what());
    } catch (...) {
        Report("a failure without a text");
    }
}

} // namespace velmo::controls
