#pragma once

#include "ports/Random.h"

#include <deque>
#include <vector>

namespace velmo::test {

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

} // namespace velmo::test
