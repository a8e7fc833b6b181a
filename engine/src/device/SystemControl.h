#pragma once

#include "CubebLibrary.h"
#include "CubebStream.h"
#include "DeviceClock.h"
#include "Output.h"
#include "PacedOutput.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace velmo::engine {

/// The state of the system's output and the body of the thread that keeps it: opens the stream,
/// starts and stops it, finds it lost, opens it anew. Shared by the output and that thread, which
/// may be stuck in a call to a server that hangs; nothing but that thread ever waits for the
/// server.
class SystemControl final : public StreamWatcher
{
public:
    explicit SystemControl(const OutputContext& context);
    virtual ~SystemControl();
    SystemControl(const SystemControl&) = delete;
    SystemControl& operator=(const SystemControl&) = delete;

    /// Body of the device thread; returns after `RequestClose`, unless the server hangs.
    void Run() noexcept;

    /// Waits for the first attempt to open. If it takes too long, the silent output plays, and the
    /// attempt goes on. API thread.
    [[nodiscard]] DeviceError AwaitOpened();

    /// Leaves a wish. Any thread; doesn't wait for the device.
    void SetRunning(bool running) noexcept;

    /// Ends all rendering, and lets the device thread end. When it returns the renderer and the
    /// clock are touched no more. API thread.
    void RequestClose();

    /// Whether the device thread has ended within `limit`. API thread.
    [[nodiscard]] bool AwaitFinished(std::chrono::milliseconds limit);

private:
    enum class Phase
    {
        Silent,    ///< there's no device: the null output plays
        Streaming, ///< the stream is open
        Lost,      ///< the stream was open; time stands still
    };

    void OpenFirst();
    void Step();
    void StepSilent();
    void StepStreaming();
    void StepLost();

    [[nodiscard]] StreamFailure OpenStream();
    void NoteDevice();
    void NoteChannels(std::uint32_t channels);
    void LookUpName();
    [[nodiscard]] bool TakeStream();
    [[nodiscard]] std::optional<std::chrono::milliseconds> StreamRest() const;
    [[nodiscard]] bool IsSettling() const;
    void LookAtStream();
    void FollowWish(bool running);
    void SamplePosition();
    void LoseStream();
    [[nodiscard]] bool AwaitAttempt();
    void PlaySilently(const char* reason);
    [[nodiscard]] bool IsClosing();
    void StreamLost() noexcept override;

    Renderer& m_renderer;
    DeviceClock& m_clock;
    DeviceNotice& m_notice;

    // The device thread's own.
    std::optional<CubebLibrary> m_library;
    std::unique_ptr<CubebStream> m_stream;
    DeviceDescription m_description; ///< of m_stream
    Phase m_phase = Phase::Silent;
    std::uint64_t m_base = 0; ///< frames rendered when the stream was taken
    bool m_started = false;
    bool m_named = false; ///< the stream's device has been asked for its name
    SteadyTime m_startTime;
    SteadyTime m_nextAttempt;
    int m_attempts = 0; ///< since a stream has played

    std::mutex m_mutex;
    std::condition_variable m_changed;  ///< for the device thread
    std::condition_variable m_reported; ///< for API threads
    // Guarded by m_mutex.
    bool m_running = false;
    bool m_closing = false;
    bool m_lost = false;
    bool m_opened = false;   ///< m_error is the outcome of opening
    bool m_finished = false; ///< the device thread has ended
    bool m_toldSilence = false;
    DeviceError m_error = DeviceError::None;
    DeviceSettings m_settings; ///< written by the device thread only, which reads without the lock
    std::unique_ptr<PacedOutput> m_silent;
    std::shared_ptr<RenderGate> m_gate; ///< of m_stream
};

} // namespace velmo::engine
