#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "state/rf_parameter.h"

namespace orvane {

/// Positions that the text form and the image have room for; beyond them is out of range.
inline constexpr std::size_t kRFTextPositions = 2701;

/// The one live record and its two other forms.
struct RFState {
  RFParameter RFParams;
  /// Values of a parameter file by position, 0..1856 used.
  std::vector<std::string> RFParamText = std::vector<std::string>(kRFTextPositions);
  /// One hexadecimal text per EEPROM byte, 0..1815 used.
  std::vector<std::string> EepromImage = std::vector<std::string>(kRFTextPositions);
  /// The Target's image as it was read back behind the last save; empty when it was not.
  std::vector<std::uint8_t> eepromReadBack;
  /// Data lines of the last file read.
  int RFParamCount = 0;
  /// Whether the record stands on a whole parameter file: what a calibration leaves alone is zero or a mixture
  /// otherwise.
  bool recordIsWhole = false;
  /// What is wrong with the installed file that the record comes from, as a sentence; empty when nothing is.
  std::string damage;
};

}  // namespace orvane
