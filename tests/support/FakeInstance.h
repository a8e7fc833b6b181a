#pragma once

#include "ports/Instance.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// Another process of the program, or none; what it is asked is written down.
class FakeInstance final : public ports::Instance
{
    using Running = ports::RunningInstance;
    using Deadline = std::chrono::steady_clock::time_point;

public:
    bool CreateInstanceMutex(const std::string& name) override
    {
        calls.push_back("mutex " + name);
        return isFirst;
    }
    void MarkMainWindow(ports::InstanceEvents) override {}
    std::optional<Running> FindRunningInstance(Deadline) override
    {
        calls.emplace_back("find");
        return found ? std::optional(Running{.address = "there"}) : std::nullopt;
    }
    bool IsWindowVisible(const Running&, Deadline) override { return visible; }
    bool Send(const Running&, const ports::HandOverRecord& record, Deadline) override
    {
        calls.push_back("send " + std::to_string(record.bytes.size()) + " " + record.bytes);
        return true;
    }
    bool ActivateWindow(const Running&, Deadline) override
    {
        calls.emplace_back("activate");
        return true;
    }
    void ReleaseInstance() override { onRelease(); }

    std::function<void()> onRelease;
    bool isFirst = true;
    bool found = true;
    bool visible = true;
    std::vector<std::string> calls;
};

} // namespace velmo::test
