#pragma once

#include <string>

namespace velmo::ports {

/// Which kinds of file the desktop opens with this program. User-interface thread; failures are
/// silent.
class Associations
{
public:
    virtual ~Associations() = default;

    /// Ties the extension (without its dot) to this program, or gives it back to whom it belonged.
    virtual void AssociateExtension(const std::string& extension, bool on) = 0;

    /// The same for audio CDs.
    virtual void AssociateAudioCD(bool on) = 0;

    /// Makes the program known as one that opens files.
    virtual void RegisterProgId() = 0;
};

} // namespace velmo::ports
