#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "link/deframer.h"

namespace orvane::test {

/// What deframing gives, worked out another way: by appending what is kept, without indices that move.
struct PlainDeframed {
  std::vector<int> values;
  bool found = false;
  int start = 0;
  int end = 0;
};

[[nodiscard]] PlainDeframed DeframedPlainly(std::string_view gathered, ReplyLayout layout);

/// Where the two differ, in words; empty when they agree.
[[nodiscard]] std::string DifferenceOf(const Deframed& reply, const PlainDeframed& plain);

}  // namespace orvane::test
