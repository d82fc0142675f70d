#pragma once

#include "base/failure.h"

namespace orvane {

/// Two places of the receive run colour a stop button of frmMPAutoCal, which has none: the run ends there.
[[noreturn]] inline void ColourMissingStopButton() {
  throw StationFailure("Object missing: frmMPAutoCal has no cmdAutoCalStop.");
}

}  // namespace orvane
