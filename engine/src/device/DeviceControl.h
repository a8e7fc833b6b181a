#pragma once

#include "DeviceDescription.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace velmo::engine {

/// Makes the sound that an output plays. Implemented by the mixer.
class Renderer
{
public:
    /// Fills `frames` interleaved frames of the device's channel count, -1 to 1. Called on the
    /// output's thread, by one thread at a time: no lock, no allocation, no file access.
    virtual void Render(float* out, std::size_t frames) noexcept = 0;

    /// How many of the next `wanted` frames can be rendered without a gap for want of decoded
    /// sound; less than `wanted` also when less is left to play. Called by the output that renders
    /// faster than real time only, on its thread, before `Render`.
    virtual std::size_t FramesReady(std::size_t wanted) noexcept = 0;

    /// Blocks the output that renders faster than real time until `FramesReady` may have changed,
    /// or `Wake` is called.
    virtual void WaitForFrames() noexcept = 0;

    /// Ends the `WaitForFrames` that is running, or lets the next one return at once if none is.
    /// Any thread.
    virtual void WakeWaiting() noexcept = 0;

protected:
    ~Renderer() = default;
};

struct DeviceSettings
{
    std::uint32_t sampleRate = 44100; ///< Hz
    std::uint32_t channels = 2;       ///< of a frame, unless all speakers are wanted
    bool allSpeakers = false;         ///< as many channels as the device has: 2, 6 or 8
};

enum class DeviceError
{
    None,
    CannotOpen, ///< there is a device, or a file to write, but it cannot be opened
};

/// The one output device: which it is, and the thread that opens, starts, stops, loses, re-opens
/// and closes it.
///
/// Frames are counted from `Open` on, across every loss and re-opening: `RenderedFrames` have been
/// asked of the renderer, `HeardFrames` of them have left the device. The difference is the
/// latency.
class DeviceControl
{
public:
    explicit DeviceControl(Renderer& renderer);
    ~DeviceControl();
    DeviceControl(const DeviceControl&) = delete;
    DeviceControl& operator=(const DeviceControl&) = delete;

    /// Opens the output that the environment names and waits until that is done or has failed. API
    /// thread.
    [[nodiscard]] DeviceError Open(const DeviceSettings& settings);

    /// Closes the output. When this returns no `Render` runs and none will. Does nothing if none is
    /// open. API thread.
    void Close();

    /// Whether the output shall pull frames. Returns at once; the output follows as soon as it can,
    /// and renders its first block right away after a start. Any thread but the output's own.
    void SetRunning(bool running) noexcept;

    /// Frames that the renderer has been asked for. Any thread, no waiting.
    [[nodiscard]] std::uint64_t RenderedFrames() const noexcept;

    /// Frames of those that have been heard by now. Never falls, never above `RenderedFrames`. Any
    /// thread, no waiting.
    [[nodiscard]] std::uint64_t HeardFrames() const noexcept;

    /// Rate in Hz at which the renderer is asked for frames, as long as the output is open.
    [[nodiscard]] std::uint32_t SampleRate() const noexcept;

    /// Frames between the renderer and the ear: measured while the output last ran, and before that
    /// what it asks for. Any thread, no waiting.
    [[nodiscard]] std::uint64_t LatencyFrames() const noexcept;

    /// What the open output is, or was last. Its channel count holds from `Open` on; names are
    /// those of the kind of output until the device is known. Any thread, no waiting.
    [[nodiscard]] DeviceDescription Description() const;

    /// What `Open` would open, told without asking the device. Any thread.
    [[nodiscard]] static DeviceDescription Expected();

    /// Processor time of the threads that decode and render, in per cent of one core, over about
    /// the last second. Any thread, no waiting.
    [[nodiscard]] float CpuPercent() const noexcept;

    /// Says that the calling thread is the one that decodes.
    void MeterDecoder() noexcept;

    /// Whether the output renders as fast as it can, by no clock. API thread, while it is open.
    [[nodiscard]] bool IsFasterThanRealTime() const noexcept;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace velmo::engine
