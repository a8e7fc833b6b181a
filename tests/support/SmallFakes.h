#pragma once

#include "core/CaseRules.h"
#include "ports/Application.h"
#include "ports/Clock.h"
#include "ports/Collation.h"
#include "ports/Random.h"
#include "ports/Tray.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace velmo::test {

/// A process whose ends are written down; what is posted runs at once unless `onPost` is set.
class FakeApplication final : public ports::Application
{
public:
    std::string CommandLine() override { return commandLine; }
    std::string ProgramDirectory() override { return "/program/"; }
    std::string ApplicationDirectory() override { return "/app/"; }
    void Post(std::function<void()> handler) override { onPost ? onPost(handler) : handler(); }
    void Quit(int status) override { quits.push_back(status); }
    bool IsQuitting() override { return !quits.empty(); }

    std::function<void(std::function<void()>)> onPost; ///< takes what is posted
    std::string commandLine;
    std::vector<int> quits; ///< statuses, in order
};

/// A clock that stands where the test has set it.
class FakeClock final : public ports::Clock
{
public:
    float SecondsSinceMidnight() override { return seconds; }

    float seconds = 43200;
};

/// The order of code points without regard to case.
class FakeCollation final : public ports::Collation
{
public:
    std::string SortKey(std::string_view text) override { return FoldCase(text); }
};

/// Numbers that the test has written down; 0 once they are used up.
class FakeRandom final : public ports::Random
{
public:
    void Seed(float secondsSinceMidnight) override { seeds.push_back(secondsSinceMidnight); }
    float Next() override
    {
        if (numbers.empty())
            return 0;
        const float number = numbers.front();
        numbers.pop_front();
        return number;
    }

    std::deque<float> numbers;
    std::vector<float> seeds;
};

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
