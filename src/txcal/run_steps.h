#pragma once

#include <string>
#include <string_view>

#include "instruments/test_set.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/result_panels.h"
#include "platform/boxes.h"
#include "results/results_console.h"
#include "state/cal_state.h"
#include "state/ramp_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"
#include "state/search_trail.h"
#include "txcal/band_table.h"

namespace orvane {

/// What the transmit runs reach for.
struct TxRunParts {
  TargetLink& link;
  TestSet& testSet;
  ResultsConsole& console;
  Boxes& boxes;
  PanelRef<FrmAutoCal> panel;
  PanelRef<FrmAutoCalTxResult> results;
  CalState& cal;
  RFState& rf;
  const RampState& ramp;
  RunReport& report;
  SearchTrail& trail;
};

/// Steps that the band run, the channel step and the phase-error check have in common. A step that returns false
/// has ended the run, and has told the report why.
class RunSteps {
 public:
  explicit RunSteps(const TxRunParts& parts) : parts_(parts) {}

  /// One command to the Target, and paces when it succeeded.
  [[nodiscard]] bool Command(const std::string& line, int paces);
  /// "txpw 8 0", "txpw 9 0", then the Target goes to the reference channel.
  [[nodiscard]] bool ClearAndTune(const BandRow& band);
  [[nodiscard]] bool Tune(const std::string& channel);
  [[nodiscard]] bool TestSetReady();

  /// A stop that was asked for ends the run: the stop button turns red, the transmitter goes off.
  /// `where` says for the report how far the run had come.
  [[nodiscard]] bool Stopped(int pacesAfterOff, const std::string& where);
  void TransmitterOff(int pacesAfter);
  void PaintStop(Colour colour) { parts_.panel->cmdAutoCalStop.SetBackColor(colour); }

  /// Tells the test set what power to expect, as a whole number, and shows it.
  void ExpectPower(Decimal4 target);
  /// What stands behind a line's text.
  [[nodiscard]] std::string ValueOf(LineValue value, const BandRow& band);

  void Pace(int paces) { parts_.link.PaceDelay(paces); }

 private:
  TxRunParts parts_;
};

}  // namespace orvane
