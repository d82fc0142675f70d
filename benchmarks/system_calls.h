#pragma once

#include <functional>

namespace orvane::test {

/// How many calls of the system the work takes, in a process of its own. The work must be right without this process.
/// @throws std::runtime_error where the system lets nobody look at a process, or the work ended by an exception.
[[nodiscard]] long SystemCallsOf(const std::function<void()>& work);

}  // namespace orvane::test
