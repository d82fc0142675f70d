#pragma once

#include <vector>

#include "charger/charger_state.h"
#include "charger/frm_base_band.h"
#include "console/console_state.h"
#include "console/orvane_main.h"
#include "instruments/test_set_state.h"
#include "link/link_tally.h"
#include "link/reply_state.h"
#include "platform/gpib.h"
#include "ramp/frm_ramp_table.h"
#include "ramp/ramp_state.h"
#include "rfparams/frm_download.h"
#include "rfparams/rf_state.h"
#include "rxcal/frm_mp_auto_cal.h"
#include "rxcal/pattern_state.h"
#include "rxcal/result_panels.h"
#include "rxcal/rx_trail.h"
#include "txcal/cal_state.h"
#include "txcal/frm_auto_cal.h"
#include "txcal/run_report.h"
#include "txcal/search_trail.h"

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
};

/// Every panel of the station.
struct StationPanels {
  StationPanels();
  ~StationPanels();

  OrvaneMain main;
  FrmDownLoad downLoad;
  FrmRampTable rampTable;
  FrmAutoCal autoCal;
  FrmAutoCalTxResult txResult;
  FrmAutoCalRxResult rxResult;
  FrmMPAutoCal mpAutoCal;
  FrmFail fail;
  FrmFailPass pass;
  FrmBaseBand baseBand;

  /// In the order above.
  [[nodiscard]] std::vector<Panel*> All();
};

}  // namespace orvane
