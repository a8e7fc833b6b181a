#pragma once

#include "ports/Dialogs.h"

namespace velmo::qt {

/// Message boxes and file dialogs in front of the active window. The object names are "MessageBox"
/// and "FileDialog" (folders too).
class QtDialogs final : public ports::Dialogs
{
public:
    /// Closing a question without an answer is a no.
    ports::MessageAnswer MessageBox(const std::string& text,
                                    const std::string& title,
                                    ports::MessageStyle style) override;

    ports::FileDialogAnswer ChooseFiles(const ports::FileDialog& dialog) override;
    std::string ChooseFolder(const std::string& title) override;
    void ServeEvents() override;
};

/// The folder in which a dialog opens that was asked to open in `folder`.
std::string FolderToOpenIn(const std::string& folder);

} // namespace velmo::qt
