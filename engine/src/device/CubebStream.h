#pragma once

#include "CubebLibrary.h"
#include "DeviceControl.h"
#include "RenderGate.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace velmo::engine {

/// Hears of a stream's end.
class StreamWatcher
{
public:
    /// The stream plays no more. Called on the sound library's thread, once or more.
    virtual void StreamLost() noexcept = 0;

protected:
    ~StreamWatcher() = default;
};

enum class StreamFailure
{
    None,
    NoDevice,   ///< nothing that could play: no server, no sink, no card
    CannotOpen, ///< there is something, but it doesn't open
};

/// A stream to the sound server or the sound card, with the connection it belongs to.
///
/// Every member function but the constructor talks to the server and may block for ever when that
/// hangs, the destructor too: call them on the device thread only. What goes wrong within `Open`
/// isn't told to the watcher.
class CubebStream
{
public:
    /// `gate` gets the sound library's calls for frames; as long as it's shut they get silence.
    /// `watcher` outlives the stream.
    CubebStream(const CubebLibrary& library,
                std::shared_ptr<RenderGate> gate,
                StreamWatcher& watcher);
    ~CubebStream();
    CubebStream(const CubebStream&) = delete;
    CubebStream& operator=(const CubebStream&) = delete;

    /// Connects. To be called once; after a failure only the destructor.
    [[nodiscard]] StreamFailure Connect();

    /// Channels of the default device; 2 if that can't be told. Connected.
    [[nodiscard]] std::uint32_t DeviceChannels() const;

    /// Makes the stream, stopped. To be called once, connected; after a failure only the
    /// destructor.
    [[nodiscard]] StreamFailure Open(const DeviceSettings& settings);

    /// What plays the sound: "PulseAudio", "ALSA" and the like. Connected.
    [[nodiscard]] std::string Driver() const;

    /// The default device's name for the user; empty if it has none. Asks the server. Connected.
    [[nodiscard]] std::string DeviceName() const;

    /// Frames between the call for them and the ear that the stream asks for at `sampleRate`.
    [[nodiscard]] static std::uint64_t WantedLatency(std::uint32_t sampleRate) noexcept;

    [[nodiscard]] bool Start();
    [[nodiscard]] bool Stop();

    /// Frames heard since the stream was opened, at most those it has asked for; empty if it's
    /// lost.
    [[nodiscard]] std::optional<std::uint64_t> HeardFrames() const;

private:
    static long OnData(cubeb_stream* stream, void* user, const void* in, void* out, long frames);
    static void OnState(cubeb_stream* stream, void* user, cubeb_state state);
    [[nodiscard]] StreamFailure WhyNotOpened() const;

    CubebLibrary m_library;
    std::shared_ptr<RenderGate> m_gate;
    StreamWatcher& m_watcher;
    std::uint32_t m_channels = 2;
    bool m_prioritised = false; ///< the thread that asks for frames has been; its own
    cubeb* m_context = nullptr;
    cubeb_stream* m_stream = nullptr;
    std::atomic<std::uint64_t> m_written{0};
    std::atomic<bool> m_opened{false};
};

} // namespace velmo::engine
