#include "app/station_parts.h"

namespace orvane {

std::vector<Panel*> StationPanels::All() {
  return {&main, &downLoad, &rampTable, &autoCal, &txResult, &rxResult, &mpAutoCal, &fail, &pass, &baseBand};
}

}  // namespace orvane
