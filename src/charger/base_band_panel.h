#pragma once

#include "panels/frm_base_band.h"
#include "platform/boxes.h"
#include "state/charger_state.h"

namespace orvane {

/// The panel of the bench instruments and the charger itself: its load, its close button, and the check of the
/// shut-down voltage.
class BaseBandPanel {
 public:
  BaseBandPanel(PanelRef<FrmBaseBand> panel, ChargerState& state, Boxes& boxes)
      : panel_(panel), state_(state), boxes_(boxes) {}

  void Connect();

 private:
  PanelRef<FrmBaseBand> panel_;
  ChargerState& state_;
  Boxes& boxes_;
};

}  // namespace orvane
