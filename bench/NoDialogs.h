#pragma once

#include "ports/Dialogs.h"

#include <string>

namespace velmo::bench {

/// Nobody is asked anything here.
class NoDialogs final : public ports::Dialogs
{
public:
    ports::MessageAnswer MessageBox(const std::string&,
                                    const std::string&,
                                    ports::MessageStyle) override
    {
        return ports::MessageAnswer::Ok;
    }
    ports::FileDialogAnswer ChooseFiles(const ports::FileDialog&) override { return {}; }
    std::string ChooseFolder(const std::string&) override { return {}; }
    void ServeEvents() override {}
};

} // namespace velmo::bench
