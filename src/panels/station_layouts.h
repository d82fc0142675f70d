#pragma once

#include <utility>
#include <vector>

#include "panels/station_panels.h"
#include "platform/layout.h"

namespace orvane {

struct PanelLayout {
  Panel* panel;
  Layout layout;
};

/// Every panel with its layout, in the order of StationPanels::All.
[[nodiscard]] std::vector<PanelLayout> LayOutAll(StationPanels& panels);

}  // namespace orvane
