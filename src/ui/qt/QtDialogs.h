#pragma once

#include "ports/Dialogs.h"

namespace velmo::qt {

/// Message boxes in front of the active window. The box's object name is "MessageBox".
class QtDialogs final : public ports::Dialogs
{
public:
    /// Closing a question without an answer is a no.
    ports::MessageAnswer MessageBox(const std::string& text,
                                    const std::string& title,
                                    ports::MessageStyle style) override;
};

} // namespace velmo::qt
