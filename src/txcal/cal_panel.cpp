#include "txcal/cal_panel.h"

#include <algorithm>

#include "platform/save_dialog.h"
#include "txcal/side_tables.h"

namespace orvane {
namespace {

struct DownlinkRow {
  std::string_view command;
  std::string_view failure;
};

constexpr std::array kDownlinkRows{
    DownlinkRow{"rxpw 2 4", "Setting Time Slot is not Completed. Re-Start."},
    DownlinkRow{"scw 16 10", "Setting Loop is not Completed. Re-Start."},
    DownlinkRow{"scw 17 10", "Setting Number of Results report is not Completed. Re-Start."},
    DownlinkRow{"scw 18 10", "Setting Number of Results reset is not Completed. Re-Start."},
    DownlinkRow{"scw 24 1", "Setting stats type is not Completed. Re-Start."},
    DownlinkRow{"scw 25 0x0002", "Setting bit mask is not Completed. Re-Start."},
};

constexpr int kTxLevels = 32;

/// Ramp table of a transmit level. A level that the band has not takes its nearest table, but for the last three of
/// the second band, which take table 0.
constexpr Integer DefaultGsmRampIndex(int level) {
  return static_cast<Integer>(std::clamp(kGsmLevels.PositionOf(level), 0, 14));
}
constexpr Integer DefaultDcsRampIndex(int level) {
  constexpr int kLastOfBand = 28;
  return static_cast<Integer>(level > kLastOfBand ? 0 : std::min(level, 15));
}
static_assert(DefaultGsmRampIndex(4) == 0 && DefaultGsmRampIndex(19) == 14 && DefaultGsmRampIndex(31) == 14);
static_assert(DefaultDcsRampIndex(16) == 15 && DefaultDcsRampIndex(28) == 15 && DefaultDcsRampIndex(29) == 0);

std::string WithoutLineEndsAndTabs(std::string text) {
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n' || c == '\t'; });
  return text;
}

}  // namespace

CalPanel::CalPanel(const CalPanelPanels& panels, CalState& state, RFState& rf, TargetLink& link, TestSet& testSet,
                   Files& files, Boxes& boxes, FileDialogs& dialogs)
    : panels_(panels),
      state_(state),
      rf_(rf),
      link_(link),
      testSet_(testSet),
      files_(files),
      boxes_(boxes),
      dialogs_(dialogs) {}

void CalPanel::Connect() {
  FrmAutoCal& panel = panels_.autoCal.Untouched();
  panel.onLoad = [this] { OnLoad(); };
  panel.optSaveModeEEPROM.onClick = [this] { state_.SaveMode = "EEPROM"; };
  panel.optSaveModeFile.onClick = [this] { state_.SaveMode = "File"; };
  panel.optSaveModeEEPROMFile.onClick = [this] { state_.SaveMode = "EEPROMFile"; };
  panel.cmdAutoCalSet.onClick = [this] { SendAfc(); };
  panel.cmdAutoCalStop.onClick = [this] { ToggleStop(); };
  panel.cmdAutoCalClose.onClick = [this] { panels_.autoCal->Hide(); };
  panel.cmdTxResults.onClick = [this] { panels_.txResult->Show(); };
  panel.cmdRxAutoCalResults.onClick = [this] { panels_.rxResult->Show(); };
  panel.cmdMP.onClick = [this] { panels_.mpAutoCal->Show(); };
  panel.cmdRampShape.onClick = [this] { panels_.rampTable->Show(); };
}

void CalPanel::OnLoad() {
  FrmAutoCal& panel = *panels_.autoCal;
  panel.prgAutoCalDownload.SetVisible(false);
  panel.optPowerIndexGSM.Select();
  panel.optinitialGSM.Select();
  panel.chkAutoSaveMode.SetChecked(true);
  // Behind the check, whose click disables it: the button starts enabled although "Auto" is on.
  panel.cmdAutoCalResultSave.SetEnabled(true);
  panel.optSaveModeEEPROM.Select();
  panel.txtinitialDAC.SetText("500");
  FillDefaultSideTables(state_);
  FillDefaultRampIndices();
}

void CalPanel::FillDefaultRampIndices() {
  auto& bands = rf_.RFParams.BAND;
  for (int level = 0; level < kTxLevels; ++level) {
    const auto i = static_cast<std::size_t>(level);
    bands[0].tx_Level[i].ramp_index = DefaultGsmRampIndex(level);
    bands[1].tx_Level[i].ramp_index = DefaultDcsRampIndex(level);
  }
}

bool CalPanel::DownlinkParamSet() {
  for (const DownlinkRow& row : kDownlinkRows) {
    link_.RunTargetCommand(row.command);
    if (link_.Succeeded()) continue;
    boxes_.Warning(std::string(row.failure));
    return false;
  }
  return true;
}

void CalPanel::DownloadSaveFileName() {
  FileDialog& dialog = panels_.downLoad->dlgDownload;
  dialog.fileName.clear();
  const SaveName name = ChooseSaveName(dialogs_, dialog, files_, boxes_, "Do you want to change with ");
  if (!name.path.empty()) {
    state_.CalSaveFileName = name.path;
    state_.oldSaveFile = name.old;
  }
  if (name.end == SaveName::End::Cancelled) state_.CalSaveFileOk = false;
  if (name.end == SaveName::End::Chosen) state_.CalSaveFileOk = true;
}

void CalPanel::SendAfc() {
  const std::string& afc = panels_.autoCal->txtAutoCalAFC.Text();
  if (afc.empty()) {
    boxes_.Warning("Input AFC Value.");
    return;
  }
  if (!link_.InTestMode()) return;
  link_.RunTargetCommand("rfpw 9 " + afc);
  if (!link_.Succeeded()) return;
  // Read back without a wait: the reply shows on the console when it comes.
  panels_.main->txtUserCommand.SetText("rfpr 9");
  link_.CommandInterpreter();
}

// One click asks for a stop, the next one withdraws it. The runs look at their loop heads.
void CalPanel::ToggleStop() {
  state_.CalMode = "Stop";
  state_.CalStopRequested = !state_.CalStopRequested;
  state_.stopStands = state_.CalStopRequested;
  if (state_.stopStands) ++state_.stopsAsked;
  panels_.autoCal->cmdAutoCalStop.SetBackColor(state_.CalStopRequested ? kRed : kButtonFace);
}

std::string CalPanel::HP8960TxPowerRead() {
  constexpr int kMeasuringPaces = 51;
  constexpr int kAnswerPaces = 2;
  testSet_.Write("INITIATE:TXPOWER");
  link_.PaceDelay(kMeasuringPaces);
  testSet_.Write("INITIATE:DONE?");
  link_.PaceDelay(kAnswerPaces);
  std::string answer = WithoutLineEndsAndTabs(testSet_.Read());
  panels_.autoCal->txtTXP.SetText(answer);
  if (answer != "TXP") link_.PaceDelay(kMeasuringPaces);
  testSet_.Write("FETC:TXP:POW?");
  return answer;
}

}  // namespace orvane
