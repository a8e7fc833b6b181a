#pragma once

#include "ports/Tray.h"

#include <string>
#include <vector>

namespace velmo::test {

/// Writes down what it is asked for.
class FakeTray final : public ports::Tray
{
public:
    explicit FakeTray(std::vector<std::string>& log)
        : m_log(log)
    {}

    void Add(const std::string& toolTip) override { m_log.push_back("tray " + toolTip); }
    void Remove() override { m_log.emplace_back("no tray"); }

private:
    std::vector<std::string>& m_log;
};

} // namespace velmo::test
