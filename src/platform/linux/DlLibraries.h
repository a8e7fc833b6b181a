#pragma once

#include "ports/Libraries.h"

#include <memory>
#include <string>

namespace velmo {

/// Libraries by the dynamic loader. Only absolute paths are opened, so that no search path has a
/// say; all symbols are bound at once and stay within the library.
class DlLibraries final : public ports::Libraries
{
public:
    [[nodiscard]] std::unique_ptr<Library> Open(const std::string& path) override;
};

} // namespace velmo
