#include "DeviceDescription.h"

#include "OutputChoice.h"

#include <charconv>

namespace velmo::engine {

namespace {

/// How many speakers an output without a card stands for.
std::uint32_t SpeakersOfFile()
{
    const std::string text = EnvironmentText("VELMO_WAV_CHANNELS");
    std::uint32_t channels = 0;
    std::from_chars(text.data(), text.data() + text.size(), channels);
    return UsableSpeakers(channels);
}

} // namespace

std::uint32_t UsableSpeakers(std::uint32_t channels) noexcept
{
    return channels >= 8 ? 8 : channels >= 6 ? 6 : 2;
}

DeviceDescription DescribeSilence()
{
    return {.name = "No sound", .driver = "null"};
}

DeviceDescription DescribeChoice(const OutputChoice& choice)
{
    DeviceDescription description = DescribeSilence();
    switch (choice.kind) {
    case OutputKind::System: return {.name = "Default output", .driver = "system"};
    case OutputKind::NotKnown: return {.name = "Unknown output", .driver = "none"};
    case OutputKind::Null: break;
    case OutputKind::Wav: description = {.name = "Wave file", .driver = "wav"}; break;
    case OutputKind::WavFast: description = {.name = "Wave file", .driver = "wav-fast"}; break;
    }
    description.speakers = SpeakersOfFile();
    return description;
}

void DeviceNotice::Put(const DeviceDescription& description)
{
    const std::lock_guard lock(m_mutex);
    m_description = description;
}

DeviceDescription DeviceNotice::Get() const
{
    const std::lock_guard lock(m_mutex);
    return m_description;
}

} // namespace velmo::engine
