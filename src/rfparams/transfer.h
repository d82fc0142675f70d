#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_download.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/panel.h"
#include "state/cal_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"

namespace orvane {

/// Moves RF parameters between a file, the record and the Target's EEPROM. Whoever calls, a statement that fails is
/// passed over; the run report is told of it.
class ParameterTransfer {
 public:
  ParameterTransfer(PanelRef<FrmDownLoad> panel, PanelRef<FrmAutoCal> autoCal, RFState& rf, const CalState& cal,
                    const ReplyState& reply, TargetLink& link, RunReport& report, Boxes& boxes, FileDialogs& dialogs,
                    Files& files);

  /// Answers `cmdEepromDownLoad`, `cmdUpLoad` and the two options of the download mode.
  void Connect();

  /// Sends the bytes `first` to `last` of `EepromImage`, both inclusive, in chunks of 32: each is listed before any
  /// moves. A chunk that cannot be sent is left out, and one that the Target refuses or leaves without a reply is not
  /// sent again: the report is told which bytes. Only the status of the last command can be read afterwards.
  /// @return false when an operator stopped it between two chunks: nothing may be committed then.
  /// @throws StationFailure for a Target that does not answer any more.
  bool TMDownLoadProcedure(Integer first, Integer last);
  /// Sends one chunk of at most 32 bytes.
  void TMEEPROMDataWrite(Integer first, Integer last);
  /// Reads the image back from the Target, row by row, into `eepromReadBack`, and tells the report which bytes are
  /// not those of `EepromImage`. It changes nothing else. It ends at the first row that cannot be read.
  /// @return false when an operator stopped it between two rows.
  bool VerifyImage();
  /// Behind a command of a transfer: where it did not succeed the report is told what follows from that.
  void TellDoubt(const std::string& line, const std::string& consequence);
  /// Has no action.
  void EEPROMDataWrite(Integer first, Integer last);

 private:
  void DownLoad();
  void UpLoad();
  /// Fills `RFParamText` from a file. @return false when it cannot be read, which a box has shown.
  bool ReadFile(const std::string& path);
  /// Fills `EepromImage` from the Target, row by row.
  void ReadImage();
  /// The bytes of a row as the last reply has them. No value, told to the report, where there is none.
  std::optional<std::vector<std::uint8_t>> RowRead(int row);
  void TellDifferences();
  void Send(const std::string& line);
  void ShowSystemText(const StationFailure& failure) { boxes_.SystemText(failure.Text()); }

  PanelRef<FrmDownLoad> panel_;
  PanelRef<FrmAutoCal> autoCal_;
  RFState& rf_;
  const CalState& cal_;
  const ReplyState& reply_;
  TargetLink& link_;
  RunReport& report_;
  Boxes& boxes_;
  FileDialogs& dialogs_;
  Files& files_;
};

}  // namespace orvane
