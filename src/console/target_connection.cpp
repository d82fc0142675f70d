#include "console/target_connection.h"

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "instruments/dialect.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr Integer kFirstPort = 1;

/// A typed "T9300", the third entry of the list, is refused; it stays there to be picked.
const std::vector<std::string>& TypedTargets() {
  static const std::vector<std::string> targets{"QM310", "QM420"};
  return targets;
}

Integer PortNumber(std::string_view port) {
  if (port == "COM1") return kFirstPort;
  if (port == "COM2") return 2;
  if (port == "COM3") return 3;
  return 4;
}

void FillSerialSettings(ConsoleState& state, Integer portNumber) {
  state.SerialPortNumber = portNumber;
  state.SerialBaud = "115200";
  state.SerialParity = "N";
  state.SerialDataBits = "8";
  state.SerialStopBits = "1";
  state.SerialInBuffer = 1024;
  state.SerialOutBuffer = 512;
  state.SerialInputLength = 0;
}

void ApplySerialSettings(const ConsoleState& state, SerialSetup& setup) {
  setup.commPort = state.SerialPortNumber;
  setup.settings =
      state.SerialBaud + "," + state.SerialParity + "," + state.SerialDataBits + "," + state.SerialStopBits;
  setup.inBufferSize = state.SerialInBuffer;
  setup.outBufferSize = state.SerialOutBuffer;
  setup.inputLen = state.SerialInputLength;
}

}  // namespace

void TargetConnection::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.cmdTargetInitialize.onClick = [this] { Initialize(); };
  main.cmdTargetReset.onClick = [this] { Reset(); };
  main.cboPort.onChange = [this] { FilterItem(main_->cboPort, main_->cboPort.Items(), "COM1", boxes_); };
  main.cboTarget.onChange = [this] { FilterItem(main_->cboTarget, TypedTargets(), "QM310", boxes_); };
}

void TargetConnection::Initialize() {
  link_.PaceDelay(800);
  if (mscomTarget_.PortOpen()) return boxes_.Warning("Port is already Open.");
  // A missing selection skips the opening, but not what comes after it.
  if (main_->cboTarget.Text().empty()) {
    boxes_.Alarm("Select Target board");
  } else if (main_->cboPort.Text().empty()) {
    boxes_.Alarm("Select Port");
  } else if (!BringUp()) {
    return;
  }
  PrepareBenchAndCalibrate();
}

bool TargetConnection::BringUp() {
  OpenPort();
  link_.RunTargetCommand("ti");
  link_.PaceDelay(101);
  link_.RunTargetCommand("tms 1");
  // A Target that answers with a failure is alive.
  if (!link_.Silent()) return true;
  console_.Append("Target No Response !!" + std::string(kLineEnd));
  boxes_.Warning("Target을 Power On 해 주십시요");
  mscomTarget_.Close();
  return false;
}

void TargetConnection::OpenPort() {
  FillSerialSettings(state_, PortNumber(main_->cboPort.Text()));
  state_.TargetName = main_->cboTarget.Text();
  ApplySerialSettings(state_, mscomTarget_.setup);
  mscomTarget_.setup.handshaking = 0;
  mscomTarget_.setup.rThreshold = 1;
  link_.OpenPort();
  state_.SerialPortState = mscomTarget_.PortOpen();
}

void TargetConnection::PrepareBenchAndCalibrate() {
  main_->shpTargetOnOff.SetBackColor(kGreen);
  baseBand_->txtPSVoltage.SetText("4.5");
  baseBand_->cmdPSVoltageSet.Click();
  link_.PaceDelay(101);
  autoCal_->cmdAllCalStart.Click();
  testSet_.Write(LineForEveryKind(Purpose::Preset));
}

void TargetConnection::Reset() {
  if (!mscomTarget_.PortOpen()) return boxes_.Warning("Port is already closed.");
  link_.RunTargetCommand("tms 0");
  mscomTarget_.Close();
  state_.SerialPortState = mscomTarget_.PortOpen();
  // Whatever port was chosen, the next one is the first again.
  main_->cboPort.SetText("COM1");
  FillSerialSettings(state_, kFirstPort);
  ApplySerialSettings(state_, mscomTarget_.setup);
  main_->shpTargetOnOff.SetBackColor(kRed);
}

}  // namespace orvane
