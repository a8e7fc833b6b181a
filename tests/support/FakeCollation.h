#pragma once

#include "core/CaseRules.h"
#include "ports/Collation.h"

namespace velmo::test {

/// The order of code points without regard to case.
class FakeCollation final : public ports::Collation
{
public:
    std::string SortKey(std::string_view text) override { return FoldCase(text); }
};

} // namespace velmo::test
