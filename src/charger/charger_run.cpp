#include "charger/charger_run.h"

#include <algorithm>

#include "base/failure.h"
#include "link/charger_window.h"

namespace orvane {
namespace {

constexpr Colour kRunning = 0x0080FFFF;
/// Rounds in a row without a reading after which nobody can expect one any more.
constexpr int kMostRoundsInVain = 20;

}  // namespace

/// A battery count that the run looks for.
struct ChargerRun::Threshold {
  const char* reading;
  ChargerWindow window;
  const char* failure;
};
const ChargerRun::Threshold ChargerRun::kFull{"battery.full", kCC2CVWindow, "Battery Calibration ERROR."};
const ChargerRun::Threshold ChargerRun::kShutDown{"battery.shutdown", kShutDownWindow, "Battery Calibraion ERROR."};

void ChargerRun::Connect() {
  panel_.Untouched().cmdChargerAutoCal.onClick = [this] { Run(); };
}

void ChargerRun::Run() {
  const RunGuard guard(runButtons_, report_, RunKind::Charger);
  state_.running = true;
  Calibrate();
  state_.running = false;
}

void ChargerRun::Calibrate() {
  if (!link_.PortOpen()) {
    Leave("Target must be initialized at first.");
    return;
  }
  panel_->txtCC2CVADC.SetText("");
  panel_->txtShutDownADC.SetText("");
  panel_->txtChargerDisplay.SetText("");
  Decimal4 rest;
  if (link_.InTestMode()) {
    rest = "4.2"_d4 + Decimal4::FromText(panel_->txtVoltageLoss.Text());
    if (!state_.PSReady) {
      Leave("Initialize Power Supply.");
      return;
    }
    // One line that failed before the run may have been its voltage for the radio.
    if (state_.powerError) report_.Flaw("The power supply has failed since it was initialized.");
    if (!cal_.lossDamage.empty()) report_.Flaw(cal_.lossDamage);
    if (!Measure(rest)) return;
  } else {
    // The supply then goes to 0 V.
    report_.Flaw("The station is not in test mode: nothing was measured.");
  }
  SetSupply(rest);
  panel_->cmdChargerAutoCal.SetBackColor(kButtonFace);
  if (state_.BatCalShowDone) boxes_.Alarm("Battery Calibration is completed.");
  state_.BatCalShowDone = true;
}

bool ChargerRun::Measure(Decimal4 rest) {
  SetSupply(rest);
  link_.PaceDelay(3);
  panel_->cmdBatCalEnable.Click();
  panel_->cmdChargerAutoCal.SetBackColor(kRunning);
  link_.PaceDelay(11);

  reply_.RawAdcOutOfWindow = 0;
  reply_.RawAdcSkip = 0;
  if (!ReadUntilAccepted(panel_->cmdCC2CVADC, panel_->txtCC2CVADC, rest, kFull)) return false;
  link_.PaceDelay(11);
  reply_.RawAdcSkip = 0;

  SetSupply(Decimal4::FromText(panel_->cboShutDownVoltage.Text()) +
            Decimal4::FromText(panel_->txtVoltageLoss.Text()));
  // Counted from 0 up to the delay, so one pace more than it says.
  link_.PaceDelay(std::max(ToInteger(panel_->cboDelay.Text()) + 1, 0));
  if (!ReadUntilAccepted(panel_->cmdShutDownADC, panel_->txtShutDownADC, rest, kShutDown)) return false;
  link_.PaceDelay(11);
  link_.RunTargetCommand("tms 1");
  panel_->cmdWriteChargerEEPROM.Click();
  link_.PaceDelay(3);
  state_.CC2CVADCSaved = panel_->txtCC2CVADC.Text();
  state_.ShutDownADCSaved = panel_->txtShutDownADC.Text();
  panel_->cmdBatCalDisable.Click();
  return true;
}

/// The reply decoder empties the box ahead of its window test and fills it with an accepted count: the box is the
/// hand-over.
bool ChargerRun::ReadUntilAccepted(Button& read, const TextBox& accepted, Decimal4 rest, const Threshold& threshold) {
  const auto tell = [&] {
    report_.Read({threshold.reading, static_cast<double>(reply_.RawAdcValue), "count",
                  static_cast<double>(threshold.window.low), static_cast<double>(threshold.window.high)});
  };
  int roundsInVain = 0;
  while (accepted.Text().empty()) {
    if (reply_.RawAdcOutOfWindow == 1) {
      tell();
      Fail(rest, threshold.failure);
      return false;
    }
    if (roundsInVain == kMostRoundsInVain) {
      const bool refused = link_.PortOpen() && !link_.Succeeded() && !link_.Silent();
      throw StationFailure(refused ? "The Target refuses to read its raw ADC." : "The Target does not answer.");
    }
    read.Click();
    link_.WaitForReply();
    roundsInVain = link_.PortOpen() && link_.Succeeded() ? 0 : roundsInVain + 1;
  }
  tell();
  return true;
}

/// The Target stays in its charger test mode.
void ChargerRun::Fail(Decimal4 rest, const char* words) {
  report_.Flaw(std::string(words) + " Raw ADC count " + std::to_string(reply_.RawAdcValue) + ".");
  SetSupply(rest);
  panel_->cmdChargerAutoCal.SetBackColor(kButtonFace);
  cal_.CalFailed = true;
  boxes_.Warning(words);
  state_.BatCalShowDone = true;
}

void ChargerRun::SetSupply(Decimal4 volts) {
  panel_->txtPSVoltage.SetText(volts.Text());
  const std::string line = "VOLT " + panel_->txtPSVoltage.Text();
  const long before = power_.LinesWritten();
  power_.Write(line);
  if (power_.LinesWritten() == before) report_.Flaw("The power supply did not take \"" + line + "\".");
}

void ChargerRun::Leave(const char* words) {
  report_.Flaw(words);
  boxes_.Warning(words);
}

}  // namespace orvane
