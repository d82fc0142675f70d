#pragma once

#include <string>

#include "base/numbers.h"
#include "platform/event_loop.h"

namespace orvane {

/// The station waits for an instrument that another one uses too.
struct InstrumentWait {
  Integer address = 0;
  /// In the words that he left; empty when nobody knows.
  std::string holder;
  TimePoint since{0};
};

}  // namespace orvane
