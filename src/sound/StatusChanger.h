#pragma once

#include <string>

namespace velmo {

/// What tells others about the playing track. Implemented above this layer; user-interface thread.
class StatusChanger
{
public:
    virtual ~StatusChanger() = default;

    /// The file at `path` was started. Its title is read from there only if anybody is to be told.
    virtual void UpdateYahooPlaying(const std::string& path) = 0;
    /// The user stopped the sound.
    virtual void UpdateYahooStopped() = 0;
    /// The program ends.
    virtual void UpdateYahooExit() = 0;
};

/// Tells nobody.
class NoStatusChanger final : public StatusChanger
{
public:
    void UpdateYahooPlaying(const std::string& /*path*/) override {}
    void UpdateYahooStopped() override {}
    void UpdateYahooExit() override {}
};

} // namespace velmo
