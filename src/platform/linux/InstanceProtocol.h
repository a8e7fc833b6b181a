#pragma once

#include "ports/Instance.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velmo {

/// What one process asks of the running player: one question a connection, then one byte as the
/// answer.
enum class InstanceQuestion : std::uint32_t
{
    Visible = 0x76656c01,
    Activate = 0x76656c02, ///< the bytes are the activation token
    HandOver = 0x76656c03,
};

/// A question on its way: three 32-bit words (question, `dwData`, number of bytes) in the machine's
/// order, then the bytes.
struct InstanceRequest
{
    InstanceQuestion question = InstanceQuestion::Visible;
    ports::HandOverRecord record;
};

/// The answer's byte.
enum class InstanceAnswer : char
{
    No = 0,
    Yes = 1, ///< also "done"
};

/// How far a request has come in.
enum class RequestState
{
    Incomplete,
    Complete,
    Invalid, ///< unknown question, or more bytes announced than a command line can have
};

std::string EncodeRequest(const InstanceRequest& request);

/// Reads a request from what has come in so far; fills `request` if it is complete.
RequestState DecodeRequest(std::string_view received, InstanceRequest& request);

} // namespace velmo
