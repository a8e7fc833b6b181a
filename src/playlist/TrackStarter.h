#pragma once

#include "controls/Form.h"

#include <string>

namespace velmo {

/// What the playlist asks of the player. Implemented by the module that starts tracks.
class TrackStarter
{
public:
    virtual ~TrackStarter() = default;

    /// Whether a channel was ever opened and the last opening did not fail.
    virtual bool HasChannel() const = 0;
    /// Starts the file.
    virtual void PlayTrack(const std::string& path) = 0;
    /// Shows `text` in the error window, centred over `owner`. Returns at once.
    virtual void ShowError(const std::string& text, const controls::Form& owner) = 0;
};

} // namespace velmo
