#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/record.h"

namespace orvane {

/// A reading's place between its limits; empty for one without an upper limit.
[[nodiscard]] std::string LimitBar(const RecordedReading& reading);

/// When a step was under way, of a run of so many seconds.
[[nodiscard]] std::string StepBar(const RecordedStep& step, double runSeconds);

/// One search pass by pass: how far off its target it was, by powers of ten, and the tolerance that each look took.
/// Without a target the power itself. `passes` are those of one search, at least one.
[[nodiscard]] std::string SearchPlot(const std::vector<RecordedPass>& passes, const RecordedReading* power);

/// One value a channel, with its limits where it has some.
struct ChannelValue {
  int arfcn = 0;
  double value = 0;
  bool inside = true;
};
struct ChannelPlot {
  std::string_view title;
  std::vector<ChannelValue> values;
  /// Drawn as lines, and always in the picture.
  std::vector<double> limits;
};
/// Values over ARFCN, in the order of the channels' frequencies.
[[nodiscard]] std::string PlotOverChannels(ChannelPlot plot);

}  // namespace orvane
