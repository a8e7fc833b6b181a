/// Tracker modules, by libopenmpt.
///
/// A module has no rate of its own: it is rendered at the device's, so that nothing needs to
/// convert it. Its length is one pass of the song, to the nearest frame; exactly that many frames
/// are given, silence where the song ends earlier.
///
/// The library can only move to the beginning of a row. A seek moves to a row at or before the
/// frame asked for, then renders and throws away what lies between.
#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "bass.h"

#include <libopenmpt/libopenmpt.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::engine {
namespace {

/// Larger files are no modules, but would all be read into memory.
constexpr std::uint64_t MostFileBytes = 256U << 20U;

/// The longest song that is believed.
constexpr double MostSeconds = 100.0 * 3600.0;

/// What is played of all that the library knows; as it names the kinds.
constexpr std::array<std::string_view, 6> Kinds = {"mod", "xm", "s3m", "it", "mptm", "mtm"};

class ModuleSource
{
public:
    explicit ModuleSource(std::uint32_t rate) noexcept
        : m_rate(static_cast<std::int32_t>(rate))
    {}

    /// 0, or why `bytes` cannot be played.
    int OpenContents(std::span<const std::uint8_t> bytes);

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    struct Closer
    {
        void operator()(openmpt_module* module) const noexcept { openmpt_module_destroy(module); }
    };

    bool MoveToRow(double seconds) noexcept;
    bool Discard(std::uint64_t frames) noexcept;

    std::int32_t m_rate;
    std::unique_ptr<openmpt_module, Closer> m_module;
    BASS_SOURCE_FORMAT m_format = {};
    std::uint64_t m_position = 0;
};

std::string Metadata(openmpt_module* module, const char* key)
{
    const char* const text = openmpt_module_get_metadata(module, key);
    std::string copy = text == nullptr ? "" : text;
    openmpt_free_string(text);
    return copy;
}

int ModuleSource::OpenContents(std::span<const std::uint8_t> bytes)
{
    // Without a log function the library would write to the error output.
    m_module.reset(openmpt_module_create_from_memory2(bytes.data(),
                                                      bytes.size(),
                                                      &openmpt_log_func_silent,
                                                      nullptr,
                                                      &openmpt_error_func_ignore,
                                                      nullptr,
                                                      nullptr,
                                                      nullptr,
                                                      nullptr));
    if (!m_module)
        return BASS_DECODER_NOT_MINE;
    const std::string type = Metadata(m_module.get(), "type");
    if (std::ranges::find(Kinds, type) == Kinds.end())
        return BASS_DECODER_NOT_MINE;
    const double seconds = openmpt_module_get_duration_seconds(m_module.get());
    if (!(seconds >= 0.0 && seconds <= MostSeconds))
        return BASS_DECODER_BAD_FORMAT;
    openmpt_module_ctl_set_boolean(m_module.get(), "seek.sync_samples", 1);
    m_format = {.sampleRate = static_cast<std::uint32_t>(m_rate),
                .channels = 2,
                .lengthFrames = static_cast<std::uint64_t>(std::llround(seconds * m_rate)),
                .ctype = BASS_CTYPE_MUSIC,
                .limited = 0};
    return BASS_DECODER_OK;
}

std::size_t ModuleSource::Read(float* out, std::size_t frames) noexcept
{
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    std::size_t got = 0;
    while (got < wanted) {
        const std::size_t rendered = openmpt_module_read_interleaved_float_stereo(
            m_module.get(), m_rate, wanted - got, out + 2 * got);
        if (rendered == 0)
            break;
        got += rendered;
    }
    std::fill(out + 2 * got, out + 2 * wanted, 0.0f);
    m_position += wanted;
    return wanted;
}

bool ModuleSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    if (frame == m_format.lengthFrames) {
        m_position = frame;
        return true;
    }
    if (!MoveToRow(static_cast<double>(frame) / m_rate))
        return false;
    const double row = openmpt_module_get_position_seconds(m_module.get());
    m_position =
        std::min<std::uint64_t>(frame, static_cast<std::uint64_t>(std::llround(row * m_rate)));
    return Discard(frame - m_position);
}

/// Moves to the beginning of the row that sounds at `seconds`, or of an earlier one.
bool ModuleSource::MoveToRow(double seconds) noexcept
{
    const double nearestFrame = 0.5 / m_rate;
    double back = 0.0;
    while (back < seconds) {
        const double row = openmpt_module_set_position_seconds(m_module.get(), seconds - back);
        if (row >= 0.0 && row <= seconds + nearestFrame)
            return true;
        back = 2.0 * back + 0.25;
    }
    return openmpt_module_set_position_seconds(m_module.get(), 0.0) <= nearestFrame;
}

bool ModuleSource::Discard(std::uint64_t frames) noexcept
{
    std::array<float, 2048> discarded = {};
    while (frames > 0) {
        const std::size_t step = std::min<std::uint64_t>(frames, discarded.size() / 2);
        if (Read(discarded.data(), step) == 0)
            return false;
        frames -= step;
    }
    return true;
}

Result<std::unique_ptr<ModuleSource>> OpenModule(FileWindow window, std::uint32_t deviceRate)
{
    using Opened = Result<std::unique_ptr<ModuleSource>>;
    if (window.Size() > MostFileBytes)
        return Opened::Failure(BASS_DECODER_NOT_MINE);
    std::vector<std::uint8_t> bytes(window.Size());
    bytes.resize(window.Read(bytes));
    auto source = std::make_unique<ModuleSource>(std::clamp(deviceRate, 8000U, 192000U));
    const int error = source->OpenContents(bytes);
    if (error != BASS_DECODER_OK)
        return Opened::Failure(error);
    return {.value = std::move(source)};
}

int ProbeModule(const std::uint8_t* head, std::size_t size) noexcept
{
    const int answer =
        openmpt_probe_file_header_without_filesize(OPENMPT_PROBE_FILE_HEADER_FLAGS_DEFAULT,
                                                   head,
                                                   size,
                                                   &openmpt_log_func_silent,
                                                   nullptr,
                                                   &openmpt_error_func_ignore,
                                                   nullptr,
                                                   nullptr,
                                                   nullptr);
    return answer == OPENMPT_PROBE_FILE_HEADER_RESULT_SUCCESS
                   || answer == OPENMPT_PROBE_FILE_HEADER_RESULT_WANTMOREDATA
               ? 1
               : 0;
}

} // namespace

constexpr BuiltinDecoder ModuleDecoder =
    MakeBuiltin<ModuleSource, &OpenModule>({.name = "Tracker module",
                                            .masks = "*.mod;*.xm;*.s3m;*.it;*.mtm;*.umx;*.mo3",
                                            .kind = BASS_DECODER_MUSIC,
                                            .probe = &ProbeModule});

} // namespace velmo::engine
