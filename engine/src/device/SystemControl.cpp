// Every call to the sound library may block for ever, so it's made by the device thread alone, and
// never under the lock. Other threads leave wishes under the lock and wake the device thread; what
// they must be able to do while it's stuck - to play silently, to start and stop that, to close -
// they do themselves under the same lock. The stream renders through a gate that whoever closes
// shuts from outside.
//
// The device thread sleeps without a limit while the output is stopped. While it runs it wakes to
// look at the position, or for the next attempt when there's no device.

#include "SystemControl.h"

#include "OutputChoice.h"
#include "Report.h"

#include <exception>
#include <utility>

namespace velmo::engine {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds OpenLimit{3000};
constexpr milliseconds AttemptSlow{2000};
constexpr milliseconds AttemptFast{300};
constexpr int FastAttempts = 10;

/// How long to wait after so many attempts in vain.
milliseconds AttemptDelay(int attempts)
{
    if (attempts == 0)
        return milliseconds(0);
    return attempts <= FastAttempts ? AttemptFast : AttemptSlow;
}

// The stream's start lies some tens of milliseconds after the call for it, so that the position is
// looked at often until it is under way; later only to follow the device's own clock.
constexpr milliseconds SettlingTime{500};
constexpr milliseconds SampleSettling{20};
constexpr milliseconds SampleSettled{250};

/// A stream that stands still for so long isn't about to be started: a moment to ask for its name.
constexpr milliseconds QuietTime{200};

} // namespace

SystemControl::SystemControl(const OutputContext& context)
    : m_renderer(context.renderer)
    , m_clock(context.clock)
    , m_notice(context.notice)
    , m_settings(context.settings)
{}

SystemControl::~SystemControl() = default;

void SystemControl::Run() noexcept
{
    try {
        OpenFirst();
        while (!IsClosing())
            Step();
    } catch (const std::exception&) {
        // No memory or no thread to have: whoever waits for the device is told so below.
    }
    m_stream.reset();
    const std::lock_guard lock(m_mutex);
    if (!std::exchange(m_opened, true))
        m_error = DeviceError::CannotOpen;
    m_finished = true;
    m_reported.notify_all();
}

void SystemControl::Step()
{
    switch (m_phase) {
    case Phase::Silent: StepSilent(); break;
    case Phase::Streaming: StepStreaming(); break;
    case Phase::Lost: StepLost(); break;
    }
}

DeviceError SystemControl::AwaitOpened()
{
    std::unique_lock lock(m_mutex);
    if (!m_reported.wait_for(lock, OpenLimit, [this] { return m_opened; })) {
        m_opened = true;
        PlaySilently("the sound server does not answer; playing silently until it does");
    }
    return m_error;
}

void SystemControl::SetRunning(bool running) noexcept
{
    const std::lock_guard lock(m_mutex);
    if (m_running == running)
        return;
    m_running = running;
    if (m_silent)
        m_silent->SetRunning(running);
    m_changed.notify_one();
}

void SystemControl::RequestClose()
{
    std::shared_ptr<RenderGate> gate;
    std::unique_ptr<PacedOutput> silent;
    {
        const std::lock_guard lock(m_mutex);
        m_closing = true;
        gate = std::move(m_gate);
        silent = std::move(m_silent);
        m_changed.notify_one();
    }
    if (gate)
        gate->Close();
}

bool SystemControl::AwaitFinished(milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    return m_reported.wait_for(lock, limit, [this] { return m_finished; });
}

void SystemControl::OpenFirst()
{
    StreamFailure failure = OpenStream();
    if (failure == StreamFailure::CannotOpen && m_settings.channels > 2) {
        // What has many channels need not take frames of so many.
        NoteChannels(2);
        failure = OpenStream();
    }
    m_nextAttempt = steady_clock::now() + AttemptSlow;
    if (failure == StreamFailure::None && TakeStream()) {
        m_phase = Phase::Streaming;
        return;
    }
    const std::lock_guard lock(m_mutex);
    if (m_opened || m_closing)
        return; // too late: the silent output plays already
    if (failure == StreamFailure::CannotOpen)
        m_error = DeviceError::CannotOpen;
    else
        PlaySilently("no sound device found; playing silently until one appears");
    m_opened = true;
    m_reported.notify_all();
}

void SystemControl::StepSilent()
{
    if (!AwaitAttempt())
        return;
    if (OpenStream() == StreamFailure::None && TakeStream())
        m_phase = Phase::Streaming;
    else
        m_nextAttempt = steady_clock::now() + AttemptSlow;
}

void SystemControl::StepLost()
{
    if (!AwaitAttempt())
        return;
    ++m_attempts;
    if (OpenStream() == StreamFailure::None && TakeStream())
        m_phase = Phase::Streaming;
    else
        m_nextAttempt = steady_clock::now() + AttemptDelay(m_attempts);
}

void SystemControl::StepStreaming()
{
    bool lost = false;
    bool running = false;
    {
        std::unique_lock lock(m_mutex);
        const auto somethingToDo = [this] { return m_closing || m_lost || m_running != m_started; };
        if (const auto rest = StreamRest())
            m_changed.wait_for(lock, *rest, somethingToDo);
        else
            m_changed.wait(lock, somethingToDo);
        if (m_closing)
            return;
        lost = m_lost;
        running = m_running;
    }
    if (lost)
        LoseStream();
    else if (running != m_started)
        FollowWish(running);
    else
        LookAtStream();
}

/// How long the stream needs no look; empty: until something happens.
std::optional<milliseconds> SystemControl::StreamRest() const
{
    if (!m_started)
        return m_named ? std::nullopt : std::optional(QuietTime);
    return IsSettling() ? SampleSettling : SampleSettled;
}

bool SystemControl::IsSettling() const
{
    return steady_clock::now() - m_startTime < SettlingTime;
}

void SystemControl::LookAtStream()
{
    if (m_started)
        SamplePosition();
    if (!m_named && !IsSettling())
        LookUpName();
}

/// Makes a stream with a gate that is still shut.
StreamFailure SystemControl::OpenStream()
{
    if (!m_library)
        m_library = CubebLibrary::Load();
    if (!m_library)
        return StreamFailure::NoDevice;
    auto gate = std::make_shared<RenderGate>(m_renderer, m_clock);
    {
        const std::lock_guard lock(m_mutex);
        if (m_closing)
            return StreamFailure::NoDevice;
        m_lost = false;
        m_gate = gate;
    }
    m_stream = std::make_unique<CubebStream>(*m_library, std::move(gate), *this);
    StreamFailure failure = m_stream->Connect();
    if (failure == StreamFailure::None) {
        NoteDevice();
        failure = m_stream->Open(m_settings);
    }
    if (failure != StreamFailure::None)
        m_stream.reset();
    return failure;
}

/// What is known of a device before it's opened. The first one that's connected to decides how many
/// channels a frame has.
void SystemControl::NoteDevice()
{
    m_description = DescribeChoice({});
    m_description.driver = m_stream->Driver();
    m_description.speakers = UsableSpeakers(m_stream->DeviceChannels());
    if (m_settings.allSpeakers)
        NoteChannels(m_description.speakers);
}

/// Sets the size of a frame, unless somebody renders already.
void SystemControl::NoteChannels(std::uint32_t channels)
{
    const std::lock_guard lock(m_mutex);
    if (!m_opened)
        m_settings.channels = channels;
}

/// Asks the server, so in a quiet moment only.
void SystemControl::LookUpName()
{
    m_named = true;
    const std::string name = m_stream->DeviceName();
    if (name.empty())
        return;
    m_description.name = name;
    const std::lock_guard lock(m_mutex);
    if (!m_closing)
        m_notice.Put(m_description);
}

/// Goes over to the new stream, from the silent output if that plays. The stream starts with the
/// next step. False if the output has been closed meanwhile.
bool SystemControl::TakeStream()
{
    const std::lock_guard lock(m_mutex);
    m_opened = true; // from here on nobody makes a silent output any more
    m_reported.notify_all();
    // Under the lock, so that whoever closes doesn't return before it's gone. It waits for a block
    // of nothing but memory at the most.
    m_silent.reset();
    if (m_closing)
        return false;
    m_base = m_clock.Rendered();
    m_clock.SetLatency(CubebStream::WantedLatency(m_settings.sampleRate));
    m_description.channels = m_settings.channels;
    m_notice.Put(m_description);
    m_started = false;
    m_named = false;
    m_gate->Open();
    return true;
}

void SystemControl::FollowWish(bool running)
{
    const bool done = running ? m_stream->Start() : m_stream->Stop();
    m_started = running;
    m_startTime = steady_clock::now();
    if (done)
        SamplePosition();
    else
        StreamLost();
}

void SystemControl::SamplePosition()
{
    const std::optional<std::uint64_t> heard = m_stream->HeardFrames();
    const SteadyTime now = steady_clock::now();
    const std::lock_guard lock(m_mutex);
    if (m_closing)
        return;
    if (!heard) {
        m_lost = true;
    } else if (m_started && *heard > 0) {
        m_attempts = 0; // a stream that only opens, and fails then, is still one in vain
        m_clock.Run(m_base + *heard, now);
        m_clock.SetLatency(m_clock.Rendered() - (m_base + *heard));
    } else {
        m_clock.Stand(m_base + *heard);
    }
}

/// The time stands where it is until there's a stream again: the first attempt comes at once, but
/// not after a stream that failed before it played.
void SystemControl::LoseStream()
{
    std::shared_ptr<RenderGate> gate;
    {
        const std::lock_guard lock(m_mutex);
        if (m_closing)
            return;
        m_clock.Stand(m_clock.Heard(steady_clock::now()));
        gate = std::move(m_gate);
    }
    gate->Close();
    m_stream.reset();
    m_phase = Phase::Lost;
    m_nextAttempt = steady_clock::now() + AttemptDelay(m_attempts);
}

/// Sleeps until it's time for an attempt; without a limit as long as nothing shall run. False if
/// the output is to be closed.
bool SystemControl::AwaitAttempt()
{
    std::unique_lock lock(m_mutex);
    while (!m_closing && !(m_running && steady_clock::now() >= m_nextAttempt)) {
        if (m_running)
            m_changed.wait_until(lock, m_nextAttempt);
        else
            m_changed.wait(lock);
    }
    return !m_closing;
}

/// Puts the null output in the device's place, and says so once. Under the lock.
void SystemControl::PlaySilently(const char* reason)
{
    m_silent = std::make_unique<PacedOutput>(
        OutputContext{m_renderer, m_clock, m_settings, m_notice}, nullptr);
    DeviceDescription silence = DescribeSilence();
    silence.channels = m_settings.channels;
    silence.speakers = m_settings.channels;
    m_notice.Put(silence);
    m_silent->SetRunning(m_running);
    if (!std::exchange(m_toldSilence, true))
        Report(reason);
}

bool SystemControl::IsClosing()
{
    const std::lock_guard lock(m_mutex);
    return m_closing;
}

void SystemControl::StreamLost() noexcept
{
    const std::lock_guard lock(m_mutex);
    m_lost = true;
    m_changed.notify_one();
}

} // namespace velmo::engine
