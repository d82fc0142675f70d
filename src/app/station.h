#pragma once

#include <memory>
#include <vector>

#include "charger/charger_state.h"
#include "charger/frm_base_band.h"
#include "console/console_state.h"
#include "console/orvane_main.h"
#include "instruments/test_set_state.h"
#include "link/reply_state.h"
#include "platform/boxes.h"
#include "platform/event_loop.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/gpib.h"
#include "platform/operation_nest.h"
#include "platform/serial_control.h"
#include "ramp/frm_ramp_table.h"
#include "ramp/ramp_state.h"
#include "rfparams/frm_download.h"
#include "rfparams/rf_state.h"
#include "rxcal/frm_mp_auto_cal.h"
#include "rxcal/result_panels.h"
#include "txcal/cal_state.h"
#include "txcal/frm_auto_cal.h"
#include "txcal/run_report.h"

namespace orvane {

/// The world that a station stands in. All of it outlives the station.
struct StationPorts {
  EventLoop& loop;
  SerialControl& mscomTarget;
  GpibBus& bus;
  Files& files;
  Boxes& boxes;
  FileDialogs& dialogs;
};

/// Everything station-wide, each under its own name, by the subsystem that owns it.
struct StationState {
  ReplyState reply;
  LinkTally tally;
  ConsoleState console;
  TestSetState testSet;
  RFState rf;
  RampState ramp;
  CalState cal;
  ChargerState charger;
  RunReport report;
};

/// Every panel of the station.
struct StationPanels {
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

/// One station: its state, its panels and the operations behind them. Two stations in one process do not know each
/// other.
class Station {
 public:
  explicit Station(const StationPorts& ports);
  ~Station();
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;

  /// Shows the main panel, whose load brings the station up. Files that are missing cost their boxes; it stays up.
  void Start();

  [[nodiscard]] StationState& State() { return state_; }
  [[nodiscard]] StationPanels& Panels() { return panels_; }
  [[nodiscard]] OperationNest& Nest() { return nest_; }

 private:
  struct Operations;

  StationState state_;
  StationPanels panels_;
  OperationNest nest_;
  std::unique_ptr<Operations> operations_;
};

}  // namespace orvane
