#include "state/station_state.h"

namespace orvane {

// Here, so that not every file that has a station compiles the making and the end of it.
StationState::StationState() = default;
StationState::~StationState() = default;

}  // namespace orvane
