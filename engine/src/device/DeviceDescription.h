#pragma once

#include <cstdint>
#include <mutex>
#include <string>

namespace velmo::engine {

struct OutputChoice;

/// What an output is, as far as it's known.
struct DeviceDescription
{
    std::string name;           ///< as a user reads it
    std::string driver;         ///< "PulseAudio", "ALSA", "null", "wav" and the like
    std::uint32_t speakers = 2; ///< channels that the device has: 2, 6 or 8
    std::uint32_t channels = 2; ///< channels of the frames that it is given: 2, or all of them
};

/// The output that plays nothing.
[[nodiscard]] DeviceDescription DescribeSilence();

/// What is known of an output before it's opened: the kind it is of.
[[nodiscard]] DeviceDescription DescribeChoice(const OutputChoice& choice);

/// The largest number of channels that is used here, 2, 6 or 8, of a device that has `channels`.
[[nodiscard]] std::uint32_t UsableSpeakers(std::uint32_t channels) noexcept;

/// The description of the open output, left by the output and read by any thread. Its lock is held
/// for nothing but a copy.
class DeviceNotice
{
public:
    void Put(const DeviceDescription& description);
    [[nodiscard]] DeviceDescription Get() const;

private:
    mutable std::mutex m_mutex;
    DeviceDescription m_description;
};

} // namespace velmo::engine
