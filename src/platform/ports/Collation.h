#pragma once

#include <string>
#include <string_view>

namespace velmo::ports {

/// The order of texts that the user is used to. User-interface thread.
class Collation
{
public:
    virtual ~Collation() = default;

    /// A text whose order by bytes is the order of the keys' texts: by the user's locale, without
    /// regard to case, digits one by one. Any bytes have a key.
    virtual std::string SortKey(std::string_view text) = 0;
};

} // namespace velmo::ports
