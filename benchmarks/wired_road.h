#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "state/run_report.h"

namespace orvane::test {

/// One exchange with the Target, from the first byte of the command to the end of the reply's decoding, and what its
/// bytes take on the line.
struct WiredExchange {
  double tookUs;
  double wireUs;
};

struct RoadWishes {
  /// A file for a trace of all that passes.
  std::optional<std::string> trace{};
  /// The wires are led past a watch, which the gaps come from and a test set with readings of this length.
  std::optional<std::chrono::milliseconds> reading{};
};

/// One road of a production Target, by the station in this process on a virtual bench in another one.
struct WiredRoad {
  Verdict verdict = Verdict::None;
  double seconds = 0;
  double processorSeconds = 0;
  /// Prescribed waits by counting loops, and readings; none of them without a watch.
  double paceSeconds = 0;
  double instrumentSeconds = 0;
  std::vector<WiredExchange> exchanges;
  std::vector<double> gapsUs;
  /// The boxes that came, in words.
  std::string boxes;

  [[nodiscard]] double WireSeconds() const;
  [[nodiscard]] std::vector<double> Ratios() const;
};

/// @throws std::runtime_error when the Target does not pass.
[[nodiscard]] WiredRoad DriveWiredRoad(const RoadWishes& wishes = {});

}  // namespace orvane::test
