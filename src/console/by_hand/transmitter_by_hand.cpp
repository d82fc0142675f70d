#include "console/by_hand/transmitter_by_hand.h"

#include <string>

#include "base/numbers.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr int kPacesBehindWrite = 11;
constexpr int kPacesBeforeBurst = 101;
/// A DCS level travels as level + 100.
constexpr int kDcsLevels = 100;

// The burst button's caption is its state: it says what the next click does.
constexpr const char* kStart = "Test";
constexpr const char* kStop = "Stop";
constexpr Colour kBurstOn = 0x00FF8080;

}  // namespace

void TransmitterByHand::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.Command4.onClick = [this] { SetLevel(); };
  main.txtTxLevelIndex.onChange = [this] { SendLevel(); };
  main.optTxLevelGSM.onClick = [this] { SendLevel(); };
  main.optTxLevelDCS.onClick = [this] { SendLevel(); };
  main.cmdPowerlevelSet.onClick = [this] { SetDac(); };
  main.cmdULTest.onClick = [this] { SwitchBurst(); };
  // The up-down counts tenths of a dB. Typing into the box does not move it.
  main.updAPCLoss.onChange = [this] { main_->txtAPCLoss.SetText(NumberText(main_->updAPCLoss.Value() / 10.0)); };
  ConnectFilters(main);
}

void TransmitterByHand::ConnectFilters(OrvaneMain& main) {
  // Back to 650, though the panel shows 450.
  main.txtPowerLevel.onChange = [this] { FilterInput(main_->txtPowerLevel, {.allowed = ""}, "650", boxes_); };
  main.txtAPCLoss.onChange = [this] { FilterInput(main_->txtAPCLoss, {.allowed = "-./"}, "-0.5", boxes_); };
  main.cboULPattern.onChange = [this] {
    FilterItem(main_->cboULPattern, main_->cboULPattern.Items(), "All 0", boxes_);
  };
  main.cboULSlot.onChange = [this] { FilterItem(main_->cboULSlot, main_->cboULSlot.Items(), "4", boxes_); };
}

void TransmitterByHand::SetLevel() {
  if (main_->txtTxLevelIndex.Text().empty()) return;
  if (main_->optTxLevelGSM.Selected() || main_->optTxLevelDCS.Selected()) {
    link_.RunTargetCommand("rfpw 2 " + main_->txtServing.Text());
  }
  link_.PaceDelay(kPacesBehindWrite);
  SendLevel();
  if (!link_.Succeeded()) return;
  link_.PaceDelay(kPacesBehindWrite);
  link_.RunTargetCommand("txpr 1");
}

void TransmitterByHand::SendLevel() {
  const std::string& level = main_->txtTxLevelIndex.Text();
  if (level.empty()) return;
  if (main_->optTxLevelGSM.Selected()) return link_.RunTargetCommand("txpw 1 " + level);
  if (!main_->optTxLevelDCS.Selected()) return;
  link_.RunTargetCommand("txpw 1 " + std::to_string(CheckedInteger(ToInteger(level) + kDcsLevels)));
}

void TransmitterByHand::SetDac() {
  const std::string& dac = main_->txtPowerLevel.Text();
  if (dac.empty()) return boxes_.Warning("Run after inputing value.");
  link_.RunTargetCommand("txpw 4 " + dac);
  if (!link_.Succeeded()) return;
  link_.PaceDelay(kPacesBehindWrite);
  // The reply writes the value back into the box.
  link_.RunTargetCommand("txpr 4");
}

void TransmitterByHand::SwitchBurst() {
  // Pattern and training sequence are looked at here and never sent: the burst is what the Target holds.
  if (main_->cboULSlot.Text().empty()) return boxes_.Warning("Input TSC .");
  if (main_->cmdULTest.Caption() == kStart) return StartBurst();
  if (main_->cmdULTest.Caption() == kStop) StopBurst();
}

void TransmitterByHand::StartBurst() {
  main_->cmdULTest.SetCaption(kStop);
  main_->cmdULTest.SetBackColor(kBurstOn);
  link_.PaceDelay(kPacesBeforeBurst);
  link_.RunTargetCommand("rfe 2");
}

void TransmitterByHand::StopBurst() {
  main_->cmdULTest.SetCaption(kStart);
  main_->cmdULTest.SetBackColor(kButtonFace);
  link_.PaceDelay(kPacesBeforeBurst);
  link_.RunTargetCommand("rfe 0");
  if (!link_.Succeeded()) return boxes_.Warning("Error during Test.");
  reply_.TMStatus.clear();
  link_.PaceDelay(kPacesBeforeBurst);
  link_.RunTargetCommand("rfe 0");
}

}  // namespace orvane
