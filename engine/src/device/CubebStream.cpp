// Facts about the sound library that this rests on: an error state comes from within its opening
// call when there's a server without a sink, and means nothing then; after an error the position is
// all ones; while starved, the position runs past what was written; without a server it goes on to
// the next back end and stays there, so every attempt makes its own connection.

#include "CubebStream.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <system_error>

namespace velmo::engine {

namespace {

constexpr char Name[] = "Velmo Player";
constexpr std::uint32_t LatencyMs = 70;

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

StreamFailure CubebStream::Open(const DeviceSettings& settings)
{
    m_channels = settings.channels;
    if (m_library.init(&m_context, Name, nullptr) != CUBEB_OK) {
        m_context = nullptr;
        return HasSoundCard() ? StreamFailure::CannotOpen : StreamFailure::NoDevice;
    }
    cubeb_stream_params parameters{};
    parameters.format = CUBEB_SAMPLE_FLOAT32NE;
    parameters.rate = settings.sampleRate;
    parameters.channels = settings.channels;
    parameters.layout = settings.channels == 2 ? CUBEB_LAYOUT_STEREO : CUBEB_LAYOUT_UNDEFINED;
    parameters.prefs = CUBEB_STREAM_PREF_NONE;
    const std::uint32_t latencyFrames = settings.sampleRate * LatencyMs / 1000;
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
