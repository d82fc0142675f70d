#include "charger/charger_manual.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "charger/charger_count.h"

namespace orvane {
namespace {

/// A charger is connected from this raw value on.
constexpr Long kChargerConnected = 256;
/// What "cr" reads back: no reply ever sets it.
constexpr Long kDacReadBack = 0;

struct DacStepRow {
  Long upTo;
  Integer step;
};

constexpr std::array kDacSteps{DacStepRow{-10, 8}, DacStepRow{-6, 7}, DacStepRow{-3, 4}, DacStepRow{-1, 1},
                               DacStepRow{0, 0},   DacStepRow{2, -1}, DacStepRow{5, -4}, DacStepRow{9, -7}};
constexpr Integer kStepAbove = -8;

}  // namespace

Integer CvDacStep(Long difference) {
  const auto row = std::find_if(kDacSteps.begin(), kDacSteps.end(),
                                [&](const DacStepRow& candidate) { return difference <= candidate.upTo; });
  return row == kDacSteps.end() ? kStepAbove : row->step;
}

void ChargerManual::Connect() {
  FrmBaseBand& panel = panel_.Untouched();
  panel.cmdBatCalEnable.onClick = [this] { SwitchTestMode("tms 3", kGreen); };
  panel.cmdBatCalDisable.onClick = [this] { SwitchTestMode("tms 4", kRed); };
  panel.cmdCC2CVADC.onClick = [this] {
    reply_.RawAdcStage = 1;
    ReadRawAdc();
  };
  panel.cmdShutDownADC.onClick = [this] { ReadRawAdc(); };
  panel.cmdZeroCal.onClick = [this] { ZeroCal(); };
  panel.cmdCVDAC.onClick = [this] { SearchCvDac(); };
}

void ChargerManual::SwitchTestMode(const char* command, Colour lamp) {
  link_.RunTargetCommand(command);
  panel_->shpBatCalOnOff.SetBackColor(lamp);
}

void ChargerManual::ReadRawAdc() {
  if (!link_.InTestMode()) return;
  if (!link_.PortOpen()) {
    boxes_.Warning("Target must be initialized at first.");
    return;
  }
  reply_.ReplyOperation.clear();
  link_.RunTargetCommand("mpr 30");
}

Long ChargerManual::Read(const char* command) {
  link_.RunTargetCommand(command);
  return reply_.RawAdcValue;
}

void ChargerManual::ZeroCal() {
  if (!link_.InTestMode()) return;
  if (Read("mpr 31") < kChargerConnected) {
    boxes_.Warning("Connect Charger.");
    return;
  }
  link_.RunTargetCommand("cw 0 29 0x0009");
  link_.PaceDelay(151);
  Long sum = 0;
  for (int i = 0; i < 3; ++i) sum += Read("mpr 32");
  panel_->txtZeroCal.SetText("0x00" + HexText(RoundToInteger(sum / 3.0)));
  SendWithoutWait("cw 0 29 0x0000");
}

void ChargerManual::SearchCvDac() {
  constexpr Integer kFirstDac = 485;
  constexpr int kMostRounds = 10;
  if (!link_.InTestMode()) return;
  if (Read("mpr 31") < kChargerConnected) {
    boxes_.Warning("Connect the Charger.");
    return;
  }
  const Integer target = CountOf(panel_->txtCC2CVADC.Text());
  Integer dac = kFirstDac;
  int rounds = 0;
  Long difference = 0;
  do {
    ++rounds;
    link_.RunTargetCommand("cw 0 25 0x0" + HexText(dac));
    link_.RunTargetCommand("cw 0 29 0x0001");
    link_.RunTargetCommand("cr 0 25");
    link_.PaceDelay(101);
    const Long raw = Read("mpr 30");
    ShowSearchLines("0x" + HexText(kDacReadBack), "0x" + HexText(raw));
    difference = raw - target;
    dac = CheckedInteger(dac + CvDacStep(difference));
  } while (difference != 0 && rounds < kMostRounds);
  panel_->txtCVDACResult.SetText("0x0" + HexText(dac));
  panel_->txtLoopTime.SetText(std::to_string(rounds));
  SendWithoutWait("cw 0 29 0x0000");
}

void ChargerManual::ShowSearchLines(const std::string& readBack, const std::string& raw) {
  if (searchList_ != nullptr) {
    searchList_->AddItem(readBack);
    searchList_->AddItem(raw);
    return;
  }
  console_.AppendConsole(panel_->txtChargerDisplay, readBack + "\r\n" + raw + "\r\n");
  throw StationFailure("Object missing: frmBaseBand has no list for the CV DAC search.");
}

void ChargerManual::SendWithoutWait(const char* command) {
  main_->txtUserCommand.SetText(command);
  link_.CommandInterpreter();
}

}  // namespace orvane
