#include "txcal/result_save.h"

#include "link/transfer_watch.h"
#include "platform/save_dialog.h"
#include "rfparams/eeprom_image.h"
#include "rfparams/rf_text_file.h"

namespace orvane {
namespace {

/// First and last byte of the Target's EEPROM image.
constexpr Integer kImageFirst = 0;
constexpr Integer kImageLast = 1815;

}  // namespace

ResultSave::ResultSave(PanelRef<FrmAutoCal> autoCal, PanelRef<FrmDownLoad> downLoad, CalState& cal, RFState& rf,
                       TargetLink& link, ParameterTransfer& transfer, RunReport& report, Boxes& boxes,
                       FileDialogs& dialogs, Files& files, bool verifiesEeprom)
    : autoCal_(autoCal),
      downLoad_(downLoad),
      cal_(cal),
      rf_(rf),
      link_(link),
      transfer_(transfer),
      report_(report),
      boxes_(boxes),
      dialogs_(dialogs),
      files_(files),
      verifiesEeprom_(verifiesEeprom) {}

void ResultSave::Connect() {
  FrmAutoCal& panel = autoCal_.Untouched();
  panel.cmdAutoCalResultSave.onClick = [this] { Save(); };
  panel.chkAutoSaveMode.onClick = [&panel] {
    panel.cmdAutoCalResultSave.SetEnabled(!panel.chkAutoSaveMode.Checked());
  };
}

void ResultSave::Save() {
  cal_.saveStopped = false;
  rf_.eepromReadBack.clear();
  // It is saved all the same, but nobody may take it for a calibrated unit's.
  if (!rf_.recordIsWhole) {
    report_.Flaw("The RF parameters stand on no whole parameter file: what the run did not calibrate is wrong.");
  }
  if (!rf_.damage.empty()) report_.Flaw(rf_.damage);
  const std::string mode = cal_.SaveMode;
  const bool toBoth = mode == "EEPROMFile";
  if ((mode == "File" || toBoth) && !SaveToFile()) return;
  if (mode == "EEPROM" || toBoth) SaveToEeprom();
}

bool ResultSave::SaveToFile() {
  const std::optional<std::string> path = ChosenFile();
  if (!path) {
    report_.Flaw("No file was written: none was chosen.");
    return false;
  }
  const auto tell = [&](const StationFailure& failure) {
    report_.Flaw("No file was written: " + failure.Text());
    boxes_.SystemText(failure.Text());
  };
  std::unique_ptr<Draft> draft;
  if (!PassOver([&] { draft = files_.BeginDraft(*path, cal_.oldSaveFile); }, tell)) return false;
  RFParamsToDataConvert(rf_);
  // A disk that fails at this point costs the file alone.
  const bool written = PassOver([&] { draft->Finish(ParameterFileText(rf_)); }, tell);
  if (written) cal_.oldSaveFile = OldFile::IsOverlaid;
  return true;
}

std::optional<std::string> ResultSave::ChosenFile() {
  if (autoCal_->chkAutoSaveMode.Checked()) {
    // Chosen at the start of the run; a question that was cancelled there leaves the name of an earlier run, and the
    // file goes there.
    if (!cal_.CalSaveFileOk) report_.Flaw("No file was chosen for this run.");
    return cal_.CalSaveFileName;
  }
  FileDialog& dialog = downLoad_->dlgDownload;
  dialog.title = "RF Parameters Save";
  const SaveName name = ChooseSaveName(dialogs_, dialog, files_, boxes_, "Do you want to change a current file to ");
  if (!name.Chosen()) return std::nullopt;
  cal_.CalSaveFileName = name.path;
  cal_.oldSaveFile = name.old;
  return name.path;
}

void ResultSave::SaveToEeprom() {
  if (!link_.InTestMode()) {
    report_.Flaw("The EEPROM was not written: the Target is not in test mode.");
    return;
  }
  TMEEPROMDataMaker(rf_);
  const TransferWatch watch(link_, cal_);
  link_.RunTargetCommand("spw 5 0");
  transfer_.TellDoubt("spw 5 0", "what was written may have gone elsewhere");
  cal_.saveStopped = watch.Stopped() || !transfer_.TMDownLoadProcedure(kImageFirst, kImageLast) || watch.Stopped();
  if (cal_.saveStopped) {
    report_.Flaw("Stopped while the EEPROM was written: nothing was committed.");
    return;
  }
  link_.RunTargetCommand("se 1");
  transfer_.TellDoubt("se 1", "whether the EEPROM keeps what was written is not known");
  if (!verifiesEeprom_ || transfer_.VerifyImage()) return;
  cal_.saveStopped = true;
  report_.Flaw("Stopped while the EEPROM was read back.");
}

}  // namespace orvane
