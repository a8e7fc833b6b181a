#pragma once

#include "ports/Dialogs.h"

#include <string>
#include <vector>

namespace velmo::test {

/// Message boxes that are answered at once with `answer` and kept.
class FakeDialogs final : public ports::Dialogs
{
public:
    struct Box
    {
        std::string text;
        std::string title;
        ports::MessageStyle style;

        bool operator==(const Box&) const = default;
    };

    ports::MessageAnswer MessageBox(const std::string& text,
                                    const std::string& title,
                                    ports::MessageStyle style) override
    {
        boxes.push_back({text, title, style});
        return answer;
    }

    std::vector<Box> boxes;
    ports::MessageAnswer answer = ports::MessageAnswer::Ok;
};

} // namespace velmo::test
