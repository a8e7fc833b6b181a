#include "InstanceProtocol.h"

#include <array>
#include <cstring>

namespace velmo {

namespace {

using Header = std::array<std::uint32_t, 3>;

/// More than the system allows as arguments of a process.
constexpr std::uint32_t MostBytes = 4U * 1024 * 1024;

bool IsKnown(std::uint32_t word)
{
    const auto question = static_cast<InstanceQuestion>(word);
    return question == InstanceQuestion::Visible || question == InstanceQuestion::Activate
           || question == InstanceQuestion::HandOver;
}

} // namespace

std::string EncodeRequest(const InstanceRequest& request)
{
    const Header header{static_cast<std::uint32_t>(request.question),
                        request.record.dwData,
                        static_cast<std::uint32_t>(request.record.bytes.size())};
    std::string encoded(sizeof(Header), '\0');
    std::memcpy(encoded.data(), header.data(), sizeof(Header));
    return encoded + request.record.bytes;
}

RequestState DecodeRequest(std::string_view received, InstanceRequest& request)
{
    Header header{};
    if (received.size() < sizeof(Header))
        return RequestState::Incomplete;
    std::memcpy(header.data(), received.data(), sizeof(Header));
    if (!IsKnown(header[0]) || header[2] > MostBytes)
        return RequestState::Invalid;
    if (received.size() - sizeof(Header) < header[2])
        return RequestState::Incomplete;
    request.question = static_cast<InstanceQuestion>(header[0]);
    request.record.dwData = header[1];
    request.record.bytes = received.substr(sizeof(Header), header[2]);
    return RequestState::Complete;
}

} // namespace velmo
