#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bench/wires/file_descriptor.h"

namespace orvane::test {

// The ends of a relay's wires. None of them blocks.

/// One that sends each line at once.
[[nodiscard]] bench::FileDescriptor Ready(bench::FileDescriptor socket);
/// Closed when nobody listens there.
[[nodiscard]] bench::FileDescriptor ConnectionTo(const std::string& place);
[[nodiscard]] bench::FileDescriptor ListenerAt(const std::string& place);
/// A place that a socket keeps also while it does not listen: its port is none of those that the system gives away.
[[nodiscard]] std::string NextPlace();

/// No value when the other end has closed.
[[nodiscard]] std::optional<std::string> BytesFrom(int end);
/// Gives up on an end that has closed or takes nothing.
void SendAll(int end, std::string_view bytes);

}  // namespace orvane::test
