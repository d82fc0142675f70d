#include "charger/base_band_panel.h"

#include "platform/input_filter.h"

namespace orvane {

void BaseBandPanel::Connect() {
  FrmBaseBand& panel = panel_.Untouched();
  panel.onLoad = [this] { state_.BatCalShowDone = true; };
  panel.cmdBaseBandClose.onClick = [this] { panel_->Hide(); };
  // The list holds the first of these alone; the others may be typed. A text is checked on a click only.
  panel.cboShutDownVoltage.onClick = [this] {
    FilterItem(panel_->cboShutDownVoltage, {"3.35", "3.3", "3.25", "3.2", "3.15", "3.1"}, "3.25", boxes_,
               "Select the Item.");
  };
}

}  // namespace orvane
