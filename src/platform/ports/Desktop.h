#pragma once

namespace velmo::ports {

/// The desktop that the windows stand on. User-interface thread.
class Desktop
{
public:
    virtual ~Desktop() = default;

    struct Size
    {
        double width = 0;  ///< twips
        double height = 0; ///< twips
    };

    /// Of all screens together.
    virtual Size VirtualSize() = 0;
};

} // namespace velmo::ports
