// API threads open and close; any thread starts, stops and reads. The lock covers the pointer to
// the open output only for as long as a wish is left with it; opening and closing happen outside of
// it.

#include "DeviceControl.h"

#include "CpuMeter.h"
#include "DeviceClock.h"
#include "FastOutput.h"
#include "Output.h"
#include "OutputChoice.h"
#include "PacedOutput.h"
#include "Report.h"
#include "SystemOutput.h"
#include "WavFile.h"

#include <chrono>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace velmo::engine {

namespace {

std::unique_ptr<WavFile> CreateFile(const std::string& path, const DeviceSettings& settings)
{
    const bool isFloat = EnvironmentText("VELMO_WAV_FORMAT") == "f32";
    return WavFile::Create(path,
                           isFloat ? WavFormat::Float32 : WavFormat::Pcm16,
                           settings.sampleRate,
                           settings.channels);
}

/// Null, and a reason in `error`, if that fails.
std::unique_ptr<Output> OpenFileOutput(const OutputContext& context,
                                       const OutputChoice& choice,
                                       DeviceError& error)
{
    std::unique_ptr<WavFile> file = CreateFile(choice.path, context.settings);
    if (!file) {
        error = DeviceError::CannotOpen;
        return nullptr;
    }
    if (choice.kind == OutputKind::WavFast)
        return std::make_unique<FastOutput>(context, std::move(file));
    return std::make_unique<PacedOutput>(context, std::move(file));
}

/// Null, and a reason in `error`, if that fails.
std::unique_ptr<Output> OpenOutput(const OutputContext& context, DeviceError& error)
{
    const std::string value = EnvironmentText("VELMO_AUDIO");
    const OutputChoice choice = ParseOutputChoice(value);
    switch (choice.kind) {
    case OutputKind::System: return SystemOutput::Open(context, error);
    case OutputKind::Null: return std::make_unique<PacedOutput>(context, nullptr);
    case OutputKind::Wav:
    case OutputKind::WavFast: return OpenFileOutput(context, choice, error);
    case OutputKind::NotKnown: break;
    }
    Report("VELMO_AUDIO=" + value + " names no output");
    error = DeviceError::CannotOpen;
    return nullptr;
}

/// Hands on to the renderer, and meters the thread that calls.
// Final, and never deleted as a Renderer.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class MeteredRenderer final : public Renderer
{
public:
    explicit MeteredRenderer(Renderer& renderer) noexcept
        : m_renderer(renderer)
    {}

    void Render(float* out, std::size_t frames) noexcept override
    {
        m_renderer.Render(out, frames);
        meter.BlockRendered();
    }
    std::size_t FramesReady(std::size_t wanted) noexcept override
    {
        return m_renderer.FramesReady(wanted);
    }
    void WaitForFrames() noexcept override { m_renderer.WaitForFrames(); }
    void WakeWaiting() noexcept override { m_renderer.WakeWaiting(); }

    CpuMeter meter;

private:
    Renderer& m_renderer;
};

} // namespace

class DeviceControl::Impl
{
public:
    explicit Impl(Renderer& renderer)
        : metered(renderer)
    {}

    DeviceError Open(const DeviceSettings& settings);
    void Close();
    void SetRunning(bool running) noexcept;
    bool IsFasterThanRealTime() const noexcept { return m_isFast; }

    // These outlive the output.
    MeteredRenderer metered;
    DeviceClock clock;
    DeviceNotice notice;

private:
    DeviceSettings m_settings;
    std::mutex m_lifecycle; ///< held while opening and closing
    std::mutex m_mutex;     ///< guards m_output; never held while anything waits
    std::unique_ptr<Output> m_output;
    bool m_isFast = false;
};

DeviceError DeviceControl::Impl::Open(const DeviceSettings& settings)
{
    const std::lock_guard lifecycle(m_lifecycle);
    if (m_output)
        return DeviceError::None;
    m_settings = settings;
    clock.Reset(settings.sampleRate);
    DeviceDescription description = Expected();
    if (settings.allSpeakers)
        m_settings.channels = description.speakers;
    description.channels = m_settings.channels;
    notice.Put(description);
    DeviceError error = DeviceError::None;
    std::unique_ptr<Output> output;
    try {
        output = OpenOutput({metered, clock, m_settings, notice}, error);
    } catch (const std::exception&) {
        error = DeviceError::CannotOpen; // no memory or no thread to have
    }
    m_isFast = dynamic_cast<FastOutput*>(output.get()) != nullptr;
    const std::lock_guard lock(m_mutex);
    m_output = std::move(output);
    return error;
}

void DeviceControl::Impl::Close()
{
    const std::lock_guard lifecycle(m_lifecycle);
    std::unique_ptr<Output> output;
    {
        const std::lock_guard lock(m_mutex);
        output = std::move(m_output);
    }
}

void DeviceControl::Impl::SetRunning(bool running) noexcept
{
    const std::lock_guard lock(m_mutex);
    if (m_output)
        m_output->SetRunning(running);
}

DeviceControl::DeviceControl(Renderer& renderer)
    : m_impl(std::make_unique<Impl>(renderer))
{}

DeviceControl::~DeviceControl()
{
    Close();
}

DeviceError DeviceControl::Open(const DeviceSettings& settings)
{
    return m_impl->Open(settings);
}

void DeviceControl::Close()
{
    m_impl->Close();
}

void DeviceControl::SetRunning(bool running) noexcept
{
    m_impl->SetRunning(running);
}

std::uint64_t DeviceControl::RenderedFrames() const noexcept
{
    return m_impl->clock.Rendered();
}

std::uint64_t DeviceControl::HeardFrames() const noexcept
{
    return m_impl->clock.Heard(std::chrono::steady_clock::now());
}

std::uint32_t DeviceControl::SampleRate() const noexcept
{
    return m_impl->clock.Rate();
}

std::uint64_t DeviceControl::LatencyFrames() const noexcept
{
    return m_impl->clock.Latency();
}

DeviceDescription DeviceControl::Description() const
{
    return m_impl->notice.Get();
}

DeviceDescription DeviceControl::Expected()
{
    return DescribeChoice(ParseOutputChoice(EnvironmentText("VELMO_AUDIO")));
}

float DeviceControl::CpuPercent() const noexcept
{
    return m_impl->metered.meter.Percent();
}

void DeviceControl::MeterDecoder() noexcept
{
    m_impl->metered.meter.SetDecoder();
}

bool DeviceControl::IsFasterThanRealTime() const noexcept
{
    return m_impl->IsFasterThanRealTime();
}

} // namespace velmo::engine
