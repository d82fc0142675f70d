#pragma once

#include <string>

#include "state/ramp_state.h"

namespace orvane::test {

inline constexpr std::size_t kRampFileSize = 992 * 128;

/// Tables in which no two neighbours are alike: value j of table t is (t + j) modulo 32.
inline RampState CountingTables() {
  RampState state;
  for (std::size_t t = 0; t < state.RampTable.size(); ++t) {
    for (std::size_t j = 0; j < 32; ++j) state.RampTable[t][j] = std::to_string((t + j) % 32);
  }
  return state;
}

}  // namespace orvane::test
