#pragma once

namespace velmo::ports {

/// The desktop's own program for the volume of the system. User-interface thread.
class MixerProgram
{
public:
    virtual ~MixerProgram() = default;

    /// Starts it and returns at once; nothing happens if there is none.
    virtual void Start() = 0;
};

} // namespace velmo::ports
