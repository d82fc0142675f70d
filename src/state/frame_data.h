#pragma once

#include <array>

#include "base/numbers.h"

namespace orvane {

/// Data bytes of a frame under construction, each a signed 16-bit value.
using FrameData = std::array<Integer, 101>;

}  // namespace orvane
