#include "console/by_hand/receiver_by_hand.h"

#include <array>

#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr int kPacesBehindWrite = 101;

struct PowerMeasureStep {
  const char* line;
  const char* failure;
};

/// The loop count 10 is the test's own: nothing reads `txtPMFrame`.
constexpr std::array kPowerMeasureSteps{
    PowerMeasureStep{"rfpw 8 0", "Error with setting AFC flag. Re-Start."},
    PowerMeasureStep{"rxpw 2 4", "Error with setting Time Slot. Re-Start."},
    PowerMeasureStep{"scw 16 10", "Error with setting Loop. Re-Start."},
    PowerMeasureStep{"scw 17 10", "Error with setting Results Report. Re-Start."},
    PowerMeasureStep{"scw 18 10", "Error with setting Number of time to report Results. Re-Start."},
    PowerMeasureStep{"scw 24 1", "Error with setting Stat Type. Re-Start."},
    PowerMeasureStep{"rxpw 8 0", "Error with setting AGC Flag. Re-Start."},
    PowerMeasureStep{"rfe 1", "Error with setting rf_enable. Re-Start.."},
};

struct BoxFilterRow {
  TextBox OrvaneMain::*box;
  InputRule rule;
  const char* resetText;
};

/// The two channel boxes let Hangul letters through, and a channel falls back to 20 though the panel shows 30.
constexpr std::array kBoxFilters{
    BoxFilterRow{&OrvaneMain::txtAFCValue, {.allowed = "-"}, "-1180"},
    BoxFilterRow{&OrvaneMain::txtAGCValue, {.allowed = "-"}, "40"},
    BoxFilterRow{&OrvaneMain::txtBeacon, {.allowed = "-", .hangul = false}, "20"},
    BoxFilterRow{&OrvaneMain::txtServing, {.allowed = "-", .hangul = false}, "30"},
    BoxFilterRow{&OrvaneMain::txtFBFrame, {.allowed = ""}, "10"},
    BoxFilterRow{&OrvaneMain::txtPMFrame, {.allowed = ""}, "10"},
};

}  // namespace

void ReceiverByHand::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.cmdBeaconSet.onClick = [this] {
    const std::string& channel = main_->txtBeacon.Text();
    if (channel.empty()) return boxes_.Warning("Input ARFCN.");
    WriteAndReadBack("rfpw 1 " + channel, "rfpr 1");
  };
  main.cmdServingSet.onClick = [this] {
    const std::string& channel = main_->txtServing.Text();
    if (channel.empty()) return boxes_.Warning("Input ARFCN.");
    WriteAndReadBack("rfpw 2 " + channel, "rfpr 2");
  };
  main.cmdAGCValue.onClick = [this] {
    const std::string& gain = main_->txtAGCValue.Text();
    if (gain.empty()) return boxes_.Warning("Input the AGC Value.");
    WriteAndReadBack("rxpw 1 " + gain, "rxpr 1");
  };
  main.cmdAFCValueSet.onClick = [this] { SetAfc(); };
  // A mark for the engineer: the Target is told nothing.
  main.chkLNAOnOff.onClick = [this] {
    main_->chkLNAOnOff.SetCaption(main_->chkLNAOnOff.Checked() ? "LNA On" : "LNA On/Off");
  };
  main.cmdFBTest.onClick = [this] { TestFrequencyBurst(); };
  main.cmdPMStart.onClick = [this] { MeasurePower(); };
  ConnectFilters(main);
}

void ReceiverByHand::ConnectFilters(OrvaneMain& main) {
  for (const BoxFilterRow& row : kBoxFilters) {
    (main.*row.box).onChange = [this, &row] { FilterInput((*main_).*row.box, row.rule, row.resetText, boxes_); };
  }
  main.cboFBMode.onChange = [this] { FilterInput(main_->cboFBMode, {.allowed = ""}, "0", boxes_); };
  main.txtAGCPowerLevel.onChange = [this] {
    FilterInput(main_->txtAGCPowerLevel, {.allowed = "-"}, "-85", boxes_);
    LimitPowerLevel();
  };
}

void ReceiverByHand::SetAfc() {
  const std::string& afc = main_->txtAFCValue.Text();
  if (afc.empty()) return boxes_.Warning("Input the AFC Value.");
  link_.RunTargetCommand("rfpw 9 " + afc);
}

void ReceiverByHand::TestFrequencyBurst() {
  const std::string& frames = main_->txtFBFrame.Text();
  for (const char* count : {"scw 16 ", "scw 17 ", "scw 18 "}) link_.RunTargetCommand(count + frames);
  link_.RunTargetCommand("scw 24 1");
  link_.RunTargetCommand("scw 25 0x0004");
  const std::string& mode = main_->cboFBMode.Text();
  if (mode == "0") return link_.RunTargetCommand("rfe 13");
  if (mode == "1") return link_.RunTargetCommand("rfe 12");
  boxes_.Warning("0 or 1 is available to set.");
}

void ReceiverByHand::MeasurePower() {
  for (const PowerMeasureStep& step : kPowerMeasureSteps) {
    link_.RunTargetCommand(step.line);
    if (!link_.Succeeded()) return boxes_.Warning(step.failure);
  }
  // The reply fills txtAGCPM.
  link_.RunTargetCommand("sr 1 2");
}

void ReceiverByHand::WriteAndReadBack(const std::string& write, std::string_view read) {
  link_.RunTargetCommand(write);
  if (!link_.Succeeded()) return;
  link_.PaceDelay(kPacesBehindWrite);
  link_.RunTargetCommand(read);
}

void ReceiverByHand::LimitPowerLevel() {
  constexpr Long kLowestDbm = -127;
  constexpr Long kHighestGsmDbm = -7;
  constexpr Long kHighestDcsDbm = -12;
  const bool gsm = main_->cboRxTargetRFMode.Text() == "GSM";
  main_->updAGCPowerLevel.SetRange(kLowestDbm, gsm ? kHighestGsmDbm : kHighestDcsDbm);
}

}  // namespace orvane
