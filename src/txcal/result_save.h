#pragma once

#include <optional>
#include <string>

#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_download.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "rfparams/transfer.h"
#include "state/cal_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"

namespace orvane {

/// Saves the result of a calibration where `SaveMode` says: in a file, in the Target's EEPROM, or in both.
/// What was written to the EEPROM is read back where that is wished for: a save is told complete otherwise when all
/// pieces and the commit were acknowledged.
class ResultSave {
 public:
  ResultSave(PanelRef<FrmAutoCal> autoCal, PanelRef<FrmDownLoad> downLoad, CalState& cal, RFState& rf,
             TargetLink& link, ParameterTransfer& transfer, RunReport& report, Boxes& boxes, FileDialogs& dialogs,
             Files& files, bool verifiesEeprom = false);

  /// Answers `cmdAutoCalResultSave` and `chkAutoSaveMode`.
  void Connect();

 private:
  void Save();
  /// @return false when the operation ends here, the EEPROM left out.
  [[nodiscard]] bool SaveToFile();
  /// The file to write; empty when none was chosen.
  [[nodiscard]] std::optional<std::string> ChosenFile();
  void SaveToEeprom();

  PanelRef<FrmAutoCal> autoCal_;
  PanelRef<FrmDownLoad> downLoad_;
  CalState& cal_;
  RFState& rf_;
  TargetLink& link_;
  ParameterTransfer& transfer_;
  RunReport& report_;
  Boxes& boxes_;
  FileDialogs& dialogs_;
  Files& files_;
  bool verifiesEeprom_;
};

}  // namespace orvane
