#pragma once

#include <string>

#include "instruments/test_set.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_download.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/frm_ramp_table.h"
#include "panels/orvane_main.h"
#include "panels/result_panels.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "state/cal_state.h"
#include "state/rf_state.h"

namespace orvane {

/// The panels that the calibration panel reaches.
struct CalPanelPanels {
  PanelRef<FrmAutoCal> autoCal;
  PanelRef<OrvaneMain> main;
  PanelRef<FrmDownLoad> downLoad;
  PanelRef<FrmAutoCalTxResult> txResult;
  PanelRef<FrmAutoCalRxResult> rxResult;
  PanelRef<FrmMPAutoCal> mpAutoCal;
  PanelRef<FrmRampTable> rampTable;
};

/// The calibration panel itself: its load, the stop control, the buttons that show other panels, the AFC value, and
/// what other panels ask of it.
class CalPanel {
 public:
  CalPanel(const CalPanelPanels& panels, CalState& state, RFState& rf, TargetLink& link, TestSet& testSet,
           Files& files, Boxes& boxes, FileDialogs& dialogs);
  void Connect();

  /// Prepares the Target's measurement reports for the receive run. The first command that fails shows its box, and
  /// the ones behind it are not sent.
  /// @return whether all six went through.
  bool DownlinkParamSet();

  /// Asks for the file of the calibration result: `CalSaveFileName` and `CalSaveFileOk`. A file that can't be
  /// replaced leaves the latter as it was.
  void DownloadSaveFileName();

  /// Starts a power measurement on the HP8960 and asks for its result, which is left for the caller to read.
  /// @return the test set's answer to whether the measurement is done, "TXP" when it is.
  std::string HP8960TxPowerRead();

 private:
  void OnLoad();
  void FillDefaultRampIndices();
  void SendAfc();
  void ToggleStop();

  CalPanelPanels panels_;
  CalState& state_;
  RFState& rf_;
  TargetLink& link_;
  TestSet& testSet_;
  Files& files_;
  Boxes& boxes_;
  FileDialogs& dialogs_;
};

}  // namespace orvane
