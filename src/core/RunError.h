#pragma once

#include <stdexcept>
#include <string>

namespace velmo {

/// A run-time failure of the program's logic. It travels up to the next trap: the event that caused
/// it, a timer's tick, or `Ignoring`.
class RunError final : public std::runtime_error
{
public:
    static constexpr int FileNotFound = 53;
    static constexpr int EndOfFile = 62; ///< a file ends where more must follow

    /// `number` is the failure's known number, such as `FileNotFound`; `text` is for
    /// people.
    RunError(int number, const std::string& text)
        : std::runtime_error(text)
        , m_number(number)
    {}

    int Number() const { return m_number; }

private:
    int m_number;
};

} // namespace velmo
