#pragma once

#include "InstanceProtocol.h"
#include "LocalSocket.h"

#include <optional>
#include <string>

namespace velmo {

/// Connects to the player that listens at `address`, asks and waits for its answer, all until
/// `deadline`. Nothing if no answer came; the question may have been received all the same.
std::optional<InstanceAnswer> Ask(const std::string& address,
                                  const InstanceRequest& request,
                                  Deadline deadline);

} // namespace velmo
