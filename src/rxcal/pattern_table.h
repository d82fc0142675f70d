#pragma once

#include <cstdint>
#include <string_view>

#include "state/pattern_state.h"

namespace orvane {

/// A whole one has 31 short lines.
inline constexpr std::uint64_t kLargestPatternFile = 1 << 20;

/// The same values in all three patterns: each band falls by 50 a level down to 50.
void FillDefaultPatterns(PatternState& state);

/// Takes over a pattern file: a line for each level, from the first on, with the values of the three patterns behind
/// blanks or tabs. What a line lacks becomes empty; levels without a line keep their values; lines behind the last
/// level are passed over.
void TakePatterns(std::string_view content, PatternState& state);

}  // namespace orvane
