#pragma once

#include <string_view>

namespace orvane {

/// What the serial control tells beside sent and received bytes.
struct CommText {
  bool isError;
  std::string_view text;
};

/// The words for an event code; an unknown code is an "Undefined Error".
[[nodiscard]] CommText CommTextOf(int commEvent);

}  // namespace orvane
