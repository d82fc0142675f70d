#pragma once

#include <functional>
#include <string>
#include <vector>

#include "safe_off/off_words.h"

namespace orvane {

struct OffJob {
  OffPart part;
  GpibAddress address;
};

/// Time as the work sees it.
struct OffClock {
  std::function<TimePoint()> now;
  std::function<void(TimePoint span)> sleep;
};

struct OffLimits {
  /// All of it is over by then.
  TimePoint whole;
  /// The most of it that one message may take.
  TimePoint message;
};

/// Switches instruments off that stand on one way: tells each, asks it, and begins anew with each that fails or
/// answers otherwise, as long as there is time. "0" and "OFF" count as off, nothing else does. One that does not
/// answer leaves the others their share of the time. Those that are off go back to local.
/// @return for each why it is not sure to be off, as a sentence; empty for one that is off.
[[nodiscard]] std::vector<std::string> SwitchOff(GpibBus& bus, const std::vector<OffJob>& jobs, const OffClock& clock,
                                                 const OffLimits& limits);

}  // namespace orvane
