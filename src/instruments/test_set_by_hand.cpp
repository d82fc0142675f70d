#include "instruments/test_set_by_hand.h"

#include <string>

#include "base/text.h"
#include "instruments/dialect.h"

namespace orvane {
namespace {

/// The line for the text of an RF mode box. By hand an HP8922M is always set to GSM, whatever the box says; the
/// calibration runs do switch it to DCS.
std::string RfModeLine(Dialect dialect, const std::string& mode) {
  if (dialect == Dialect::Hp8922M || mode == "GSM") return LineFor(dialect, Purpose::BandGsm);
  if (mode == "DCS") return LineFor(dialect, Purpose::BandDcs);
  return "";
}

}  // namespace

void TestSetByHand::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.cmdAGCPowerLevelSet.onClick = [this] { SetBaseStationLevel(); };
  main.cmdAPCLoss.onClick = [this] { SetLoss(); };
  main.RXTargetSet.onClick = [this] { SetRfMode(main_->cboRxTargetRFMode); };
  main.TXTargetSet.onClick = [this] { SetRfMode(main_->cboTxTargetRFMode); };
}

void TestSetByHand::SetBaseStationLevel() {
  if (!testSet_.Ready()) return boxes_.Warning("Initialize the Test Set at first.");
  const std::string& level = main_->txtAGCPowerLevel.Text();
  if (level.empty()) return boxes_.Warning("Input the Power Level.");
  WriteShown(testSet_.Line(Purpose::BaseStationLevel, level));
}

void TestSetByHand::SetLoss() {
  if (!testSet_.Ready()) return boxes_.Warning("Initialize the Test Set at first.");
  const std::string& loss = main_->txtAPCLoss.Text();
  if (loss.empty()) return boxes_.Warning("Input the Loss.");
  WriteShown(testSet_.Line(Purpose::LossCorrection, loss));
}

void TestSetByHand::SetRfMode(const ComboBox& mode) {
  if (!testSet_.Ready()) return boxes_.Warning("Initialize Test Set at first.");
  WriteShown(RfModeLine(testSet_.Kind(), mode.Text()));
}

void TestSetByHand::WriteShown(const std::string& line) {
  testSet_.Write(line);
  console_.ShowData(main_->txtResults, line + std::string(kLineEnd));
}

}  // namespace orvane
