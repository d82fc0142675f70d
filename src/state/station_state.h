#pragma once

#include <optional>

#include "platform/gpib.h"
#include "state/cal_state.h"
#include "state/charger_state.h"
#include "state/console_state.h"
#include "state/instrument_wait.h"
#include "state/link_tally.h"
#include "state/pattern_state.h"
#include "state/ramp_state.h"
#include "state/reply_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"
#include "state/rx_trail.h"
#include "state/search_trail.h"
#include "state/test_set_state.h"

namespace orvane {

/// Everything station-wide, each under its own name, by the subsystem that owns it.
struct StationState {
  StationState();
  ~StationState();

  ReplyState reply;
  LinkTally tally;
  ConsoleState console;
  TestSetState testSet;
  RFState rf;
  RampState ramp;
  CalState cal;
  PatternState pattern;
  ChargerState charger;
  NiGlobal niGlobal;
  RunReport report;
  SearchTrail searchTrail;
  RxTrail rxTrail;
  /// For an instrument that other stations use too.
  std::optional<InstrumentWait> instrumentWait;
};

}  // namespace orvane
