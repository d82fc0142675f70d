#pragma once

#include "panels/frm_ramp_table.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "ramp/ramp_editor.h"

namespace orvane {

/// Opening and closing of `frmRampTable`, around the editor that it holds.
class RampTableDialog {
 public:
  RampTableDialog(PanelRef<FrmRampTable> dialog, RampEditor& editor, RampState& state)
      : dialog_(dialog), editor_(editor), state_(state) {}
  void Connect();

 private:
  PanelRef<FrmRampTable> dialog_;
  RampEditor& editor_;
  RampState& state_;
};

/// The two ramp delay boxes of the main panel. Nothing reads them: the record's ramp delay comes from a parameter
/// file alone, and their "Set" button does nothing.
class RampDelayBoxes {
 public:
  RampDelayBoxes(PanelRef<OrvaneMain> main, Boxes& boxes) : main_(main), boxes_(boxes) {}
  void Connect();

 private:
  PanelRef<OrvaneMain> main_;
  Boxes& boxes_;
};

}  // namespace orvane
