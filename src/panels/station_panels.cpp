#include "panels/station_panels.h"

namespace orvane {

// Here, so that not every file that has a station compiles the making and the end of a thousand controls.
StationPanels::StationPanels() = default;
StationPanels::~StationPanels() = default;

std::vector<Panel*> StationPanels::All() {
  return {&main, &downLoad, &rampTable, &autoCal, &txResult, &rxResult, &mpAutoCal, &fail, &pass, &baseBand};
}

}  // namespace orvane
