#pragma once

#include <string>

namespace velmo::ports {

/// Message styles by the numbers the program uses for them.
enum class MessageStyle
{
    Critical = 16,     ///< stop sign, one button
    WarningYesNo = 52, ///< warning sign, yes and no
};

enum class MessageAnswer
{
    Ok,
    Yes,
    No,
};

/// Modal questions and reports. User-interface thread; events are served while a box is open.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    /// Shows `text` ("\n" parts lines) under `title` and waits for the answer.
    virtual MessageAnswer MessageBox(const std::string& text,
                                     const std::string& title,
                                     MessageStyle style) = 0;
};

} // namespace velmo::ports
