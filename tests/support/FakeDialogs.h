#pragma once

#include "ports/Dialogs.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// Message boxes are answered at once by "OK", file dialogs by `choice`; all are kept.
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
        if (whileOpen)
            whileOpen(boxes.back());
        return ports::MessageAnswer::Ok;
    }

    ports::FileDialogAnswer ChooseFiles(const ports::FileDialog& dialog) override
    {
        fileDialogs.push_back(dialog);
        return choice;
    }

    std::string ChooseFolder(const std::string& title) override
    {
        folderTitles.push_back(title);
        return folder;
    }

    void ServeEvents() override {}

    std::vector<Box> boxes;
    std::vector<ports::FileDialog> fileDialogs;
    ports::FileDialogAnswer choice; ///< none: every file dialog is cancelled
    std::vector<std::string> folderTitles;
    std::string folder;                        ///< empty: every folder dialog is cancelled
    std::function<void(const Box&)> whileOpen; ///< what happens before the answer
};

} // namespace velmo::test
