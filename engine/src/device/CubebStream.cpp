// Facts about the sound library that this rests on: an error state comes from within its opening
// call when there's a server without a sink, and means nothing then; after an error the position is
// all ones; while starved, the position runs past what was written; without a server it goes on to
// the next back end and stays there, so every attempt makes its own connection.

#include "CubebStream.h"

#include "OutputThread.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <system_error>

namespace velmo::engine {

namespace {

constexpr char Name[] = "Velmo Player";
/// Half of it left gaps where other programs kept the processors busy and the thread that asks for
/// frames had no priority over them.
constexpr std::uint32_t LatencyMs = 150;

/// The order of channels is that of a WAVE file in each.
cubeb_channel_layout LayoutOf(std::uint32_t channels)
{
    switch (channels) {
    case 2: return CUBEB_LAYOUT_STEREO;
    case 6: return CUBEB_LAYOUT_3F2_LFE_BACK;
    case 8: return CUBEB_LAYOUT_3F4_LFE;
    default: return CUBEB_LAYOUT_UNDEFINED;
    }
}

/// Whether the system has a card with an output: a node like /dev/snd/pcmC0D0p.
bool HasSoundCard()
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/dev/snd", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with("pcm") && name.ends_with("p"))
            return true;
    }
    return false;
}

} // namespace

CubebStream::CubebStream(const CubebLibrary& library,
                         std::shared_ptr<RenderGate> gate,
                         StreamWatcher& watcher)
    : m_library(library)
    , m_gate(std::move(gate))
    , m_watcher(watcher)
{}

CubebStream::~CubebStream()
{
    m_opened.store(false);
    if (m_stream != nullptr) {
        m_library.streamStop(m_stream);
        m_library.streamDestroy(m_stream);
    }
    if (m_context != nullptr)
        m_library.destroy(m_context);
}

StreamFailure CubebStream::Connect()
{
    if (m_library.init(&m_context, Name, nullptr) == CUBEB_OK)
        return StreamFailure::None;
    m_context = nullptr;
    return HasSoundCard() ? StreamFailure::CannotOpen : StreamFailure::NoDevice;
}

std::uint32_t CubebStream::DeviceChannels() const
{
    std::uint32_t channels = 0;
    return m_library.getMaxChannelCount(m_context, &channels) == CUBEB_OK ? channels : 2;
}

StreamFailure CubebStream::Open(const DeviceSettings& settings)
{
    m_channels = settings.channels;
    cubeb_stream_params parameters{};
    parameters.format = CUBEB_SAMPLE_FLOAT32NE;
    parameters.rate = settings.sampleRate;
    parameters.channels = settings.channels;
    parameters.layout = LayoutOf(settings.channels);
    parameters.prefs = CUBEB_STREAM_PREF_NONE;
    const auto latencyFrames = static_cast<std::uint32_t>(WantedLatency(settings.sampleRate));
    const int result = m_library.streamInit(m_context,
                                            &m_stream,
                                            Name,
                                            nullptr,
                                            nullptr,
                                            nullptr,
                                            &parameters,
                                            latencyFrames,
                                            OnData,
                                            OnState,
                                            this);
    if (result != CUBEB_OK) {
        m_stream = nullptr;
        return WhyNotOpened();
    }
    m_opened.store(true);
    return StreamFailure::None;
}

StreamFailure CubebStream::WhyNotOpened() const
{
    // The back end of cards always names a default device, whether there is a card or not.
    if (m_library.getBackendId(m_context) == std::string_view("alsa"))
        return HasSoundCard() ? StreamFailure::CannotOpen : StreamFailure::NoDevice;
    cubeb_device_collection devices{};
    if (m_library.enumerateDevices(m_context, CUBEB_DEVICE_TYPE_OUTPUT, &devices) != CUBEB_OK)
        return StreamFailure::NoDevice;
    const bool any = devices.count > 0;
    m_library.deviceCollectionDestroy(m_context, &devices);
    return any ? StreamFailure::CannotOpen : StreamFailure::NoDevice;
}

std::string CubebStream::Driver() const
{
    const std::string_view id = m_library.getBackendId(m_context);
    if (id.starts_with("pulse"))
        return "PulseAudio";
    if (id == "alsa")
        return "ALSA";
    return id == "jack" ? "JACK" : std::string(id);
}

std::string CubebStream::DeviceName() const
{
    cubeb_device_collection devices{};
    if (m_library.enumerateDevices(m_context, CUBEB_DEVICE_TYPE_OUTPUT, &devices) != CUBEB_OK)
        return {};
    std::string name;
    for (std::size_t i = 0; i < devices.count && name.empty(); ++i) {
        const cubeb_device_info& device = devices.device[i];
        if ((device.preferred & CUBEB_DEVICE_PREF_MULTIMEDIA) != 0
            && device.friendly_name != nullptr)
            name = device.friendly_name;
    }
    m_library.deviceCollectionDestroy(m_context, &devices);
    return name;
}

std::uint64_t CubebStream::WantedLatency(std::uint32_t sampleRate) noexcept
{
    return std::uint64_t{sampleRate} * LatencyMs / 1000;
}

bool CubebStream::Start()
{
    return m_library.streamStart(m_stream) == CUBEB_OK;
}

bool CubebStream::Stop()
{
    return m_library.streamStop(m_stream) == CUBEB_OK;
}

std::optional<std::uint64_t> CubebStream::HeardFrames() const
{
    std::uint64_t position = 0;
    if (m_library.streamGetPosition(m_stream, &position) != CUBEB_OK || position == UINT64_MAX)
        return std::nullopt;
    return std::min(position, m_written.load());
}

long CubebStream::OnData(cubeb_stream*, void* user, const void*, void* out, long frames)
{
    auto& self = *static_cast<CubebStream*>(user);
    const auto count = static_cast<std::size_t>(frames);
    if (!std::exchange(self.m_prioritised, true))
        AskForRealTime();
    self.m_gate->Render(static_cast<float*>(out), count, self.m_channels);
    self.m_written.fetch_add(count);
    return frames;
}

void CubebStream::OnState(cubeb_stream*, void* user, cubeb_state state)
{
    auto& self = *static_cast<CubebStream*>(user);
    if (state == CUBEB_STATE_ERROR && self.m_opened.load())
        self.m_watcher.StreamLost();
}

} // namespace velmo::engine
