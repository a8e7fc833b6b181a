#pragma once

#include "ports/Application.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::test {

/// A process whose ends are written down; what is posted runs at once unless `onPost` is set.
class FakeApplication final : public ports::Application
{
public:
    std::string CommandLine() override { return commandLine; }
    std::string ProgramDirectory() override { return "/program/"; }
    std::string ApplicationDirectory() override { return "/app/"; }
    void Post(std::function<void()> handler) override
    {
        if (onPost)
            onPost(std::move(handler));
        else
            handler();
    }
    void Quit(int status) override { quits.push_back(status); }
    bool IsQuitting() override { return !quits.empty(); }

    std::function<void(std::function<void()>)> onPost; ///< takes what is posted
    std::string commandLine;
    std::vector<int> quits; ///< statuses, in order
};

} // namespace velmo::test
