#pragma once

#include "panels/frm_auto_cal.h"
#include "platform/boxes.h"
#include "platform/panel.h"

namespace orvane {

/// The input rules of the calibration panel's boxes and lists, and its two spins that count tenths.
class CalPanelInputs {
 public:
  CalPanelInputs(PanelRef<FrmAutoCal> panel, Boxes& boxes) : panel_(panel), boxes_(boxes) {}
  void Connect();

 private:
  PanelRef<FrmAutoCal> panel_;
  Boxes& boxes_;
};

}  // namespace orvane
