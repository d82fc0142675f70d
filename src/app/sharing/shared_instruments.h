#pragma once

#include <chrono>
#include <filesystem>
#include <set>

namespace orvane {

/// Instruments that other stations use too, and how this one waits for them.
struct SharedInstruments {
  /// Primary ones.
  std::set<int> addresses;
  std::chrono::seconds wait{120};
  /// Of the locks; empty: the usual one of this machine.
  std::filesystem::path folder;
};

}  // namespace orvane
