#include "state/station_state.h"

namespace orvane {

// Here, so that not every file that has a station compiles the making and the end of it.
StationState::StationState() {
  report.runBegan.Connect([this](RunKind kind) {
    if (kind == RunKind::Whole || kind == RunKind::Rf || kind == RunKind::Transmit) searchTrail.Forget();
  });
}
StationState::~StationState() = default;

}  // namespace orvane
