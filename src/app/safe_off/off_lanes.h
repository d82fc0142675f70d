#pragma once

#include "adapters/gpib/gpib_routes.h"
#include "safe_off/off_words.h"

namespace orvane {

/// Switches off what stands there, each over its own route, those side by side that do not share one. It returns
/// within 3 s, also when a route hangs: what it was at is left behind then, and this process should not go on for
/// long.
[[nodiscard]] OffOutcome SwitchBenchOff(const GpibRoutes& routes, const OffPlaces& places);

}  // namespace orvane
