#include "rxcal/pattern_table.h"

#include "base/text.h"
#include "platform/files.h"

namespace orvane {

void FillDefaultPatterns(PatternState& state) {
  constexpr int kStep = 50;
  for (auto& pattern : state.APCDACPatternTable) {
    for (const BandLevels& band : {kGsmLevels, kDcsLevels}) {
      for (int level = band.lowest; level <= band.highest; ++level) {
        pattern[static_cast<std::size_t>(band.PositionOf(level))] =
            std::to_string((band.highest - level + 1) * kStep);
      }
    }
  }
}

void TakePatterns(std::string_view content, PatternState& state) {
  for (std::size_t row = 0; row < kTablePositions && !content.empty(); ++row) {
    std::string line = ReplaceAll(TakeLine(content), "\t", " ");
    for (auto& pattern : state.APCDACPatternTable) pattern[row] = ExtractWord(line);
  }
}

}  // namespace orvane
