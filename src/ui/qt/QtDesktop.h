#pragma once

#include "ports/Desktop.h"

namespace velmo::qt {

/// The screens that the windowing system tells of.
class QtDesktop final : public ports::Desktop
{
public:
    Size VirtualSize() override;
};

} // namespace velmo::qt
