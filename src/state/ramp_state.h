#pragma once

#include <array>
#include <string>

namespace orvane {

inline constexpr int kRampTables = 31;
inline constexpr int kRampValues = 32;
/// The first half of a table rises, the second falls.
inline constexpr int kRampUpValues = 16;

/// The burst ramp shapes: 31 tables of 16 up values and 16 down values, each the text of a whole number 0..31.
struct RampState {
  std::array<std::array<std::string, kRampValues>, kRampTables> RampTable;
  /// "File" or "Target": what Load and Save do.
  std::string RampStorageMode;
  /// What is wrong with the file that the tables come from, as a sentence; empty when nothing is.
  std::string damage;
};

}  // namespace orvane
