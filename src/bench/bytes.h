#pragma once

#include <cstdint>
#include <vector>

namespace orvane::bench {

using Bytes = std::vector<std::uint8_t>;

}  // namespace orvane::bench
