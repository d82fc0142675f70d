#pragma once

#include "instruments/test_set.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/panel.h"
#include "platform/serial_control.h"
#include "results/results_console.h"
#include "state/console_state.h"

namespace orvane {

/// The group "Target System (Serial) " of the main panel: opens and closes the line to the Target, and brings the
/// Target into test mode and back. After a good bring-up the same click prepares the bench and starts the whole run.
class TargetConnection {
 public:
  TargetConnection(PanelRef<OrvaneMain> main, PanelRef<FrmBaseBand> baseBand, PanelRef<FrmAutoCal> autoCal,
                   ConsoleState& state, SerialControl& mscomTarget, TargetLink& link, TestSet& testSet,
                   ResultsConsole& console, Boxes& boxes)
      : main_(main),
        baseBand_(baseBand),
        autoCal_(autoCal),
        state_(state),
        mscomTarget_(mscomTarget),
        link_(link),
        testSet_(testSet),
        console_(console),
        boxes_(boxes) {}

  void Connect();

 private:
  void Initialize();
  void Reset();
  /// @return whether the Target answered. @throws StationFailure when the port does not open.
  bool BringUp();
  void OpenPort();
  void PrepareBenchAndCalibrate();

  PanelRef<OrvaneMain> main_;
  PanelRef<FrmBaseBand> baseBand_;
  PanelRef<FrmAutoCal> autoCal_;
  ConsoleState& state_;
  SerialControl& mscomTarget_;
  TargetLink& link_;
  TestSet& testSet_;
  ResultsConsole& console_;
  Boxes& boxes_;
};

}  // namespace orvane
