#pragma once

#include "ports/Instance.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// Another process of the program, or none; what it is asked is written down.
class FakeInstance final : public ports::Instance
{
public:
    bool CreateInstanceMutex(const std::string& name) override
    {
        calls.push_back("mutex " + name);
        return isFirst;
    }
    void MarkMainWindow(ports::InstanceEvents) override {}
    std::optional<ports::RunningInstance> FindRunningInstance(
        std::chrono::steady_clock::time_point) override
    {
        calls.emplace_back("find");
        return found ? std::optional(ports::RunningInstance{.address = "there"}) : std::nullopt;
    }
    bool IsWindowVisible(const ports::RunningInstance&,
                         std::chrono::steady_clock::time_point) override
    {
        return visible;
    }
    bool Send(const ports::RunningInstance&,
              const ports::HandOverRecord& record,
              std::chrono::steady_clock::time_point) override
    {
        calls.push_back("send " + std::to_string(record.bytes.size()) + " " + record.bytes);
        return true;
    }
    bool ActivateWindow(const ports::RunningInstance&,
                        std::chrono::steady_clock::time_point) override
    {
        calls.emplace_back("activate");
        return true;
    }
    void ReleaseInstance() override
    {
        calls.emplace_back("release");
        if (onCall)
            onCall(calls.back());
    }

    std::function<void(const std::string&)> onCall; ///< told of the release

    bool isFirst = true;
    bool found = true;
    bool visible = true;
    std::vector<std::string> calls;
};

} // namespace velmo::test
