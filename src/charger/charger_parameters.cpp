#include "charger/charger_parameters.h"

#include <array>

#include "base/failure.h"
#include "charger/charger_count.h"

namespace orvane {
namespace {

// The ADC sees a quarter of the battery's voltage.
constexpr double kAdcShare = 4.0;
constexpr Decimal4 kFullAtAdc = "1.05"_d4;
constexpr Decimal4 kChargeCurrent = "0.5"_d4;
constexpr Decimal4 kFullChargeCurrent = "0.03"_d4;
constexpr Decimal4 kVoltsPerAmpere = "2.0238"_d4;
constexpr Decimal4 kVoltsPerDacStep = "0.0018"_d4;

constexpr const char* kNotInitialized = "Target must be initialized at first.";

}  // namespace

ChargerParameters CalculateParameters(const ChargerMeasured& measured) {
  const auto [x, y, z, d, shutDownVoltage] = measured;
  // The slope keeps four decimals of its typical 0.0017: every later figure depends on that.
  const Decimal4 slope =
      Decimal4::FromDouble((kFullAtAdc.ToDouble() - shutDownVoltage.ToDouble() / kAdcShare) / CheckedInteger(x - y));
  const Decimal4 offset = kFullAtAdc - slope * Decimal4(CheckedInteger(x - z));
  const double aboveFull = (offset + kChargeCurrent * kVoltsPerAmpere).ToDouble() - kFullAtAdc.ToDouble();
  if (slope == 0) throw StationFailure("Division by zero: the slope of the ADC is 0.");
  return {RoundToInteger(d + aboveFull / kVoltsPerDacStep.ToDouble()),
          RoundToInteger(z + (kFullChargeCurrent * kVoltsPerAmpere).ToDouble() / slope.ToDouble())};
}

void ChargerParameterPanel::Connect() {
  panel_.Untouched().cmdCalculateParameter.onClick = [this] { Calculate(); };
  panel_.Untouched().cmdWriteChargerEEPROM.onClick = [this] { WriteFlash(); };
}

bool ChargerParameterPanel::IsThere(const TextBox& box, const char* words) {
  if (!box.Text().empty()) return true;
  boxes_.Warning(words);
  return false;
}

void ChargerParameterPanel::Calculate() {
  if (!link_.PortOpen()) {
    boxes_.Warning(kNotInitialized);
    return;
  }
  if (!IsThere(panel_->txtCC2CVADC, "4.2V ADC Value is needed.") ||
      !IsThere(panel_->txtShutDownADC, "3.1V ADC Value is needed.") ||
      !IsThere(panel_->txtZeroCal, "Zero Calibration Value is needed.") ||
      !IsThere(panel_->txtCVDACResult, "CV DAC Value is needed.")) {
    return;
  }
  ChargerMeasured measured{CountOf(panel_->txtCC2CVADC.Text()),
                           CountOf(panel_->txtShutDownADC.Text()),
                           CountOf(panel_->txtZeroCal.Text()),
                           CountOf(panel_->txtCVDACResult.Text()),
                           {}};
  if (CheckedInteger(measured.x - measured.y) < 50) {
    boxes_.Warning("Measured value is not valid. Try Auto Cal again.");
    return;
  }
  measured.shutDownVoltage = Decimal4::FromText(panel_->cboShutDownVoltage.Text());
  const ChargerParameters results = CalculateParameters(measured);
  panel_->txtCCDACResult.SetText("0x0" + HexText(results.ccDac));
  panel_->TxtCVCutValue.SetText("0x00" + HexText(results.cvCut));
  ShowResults(measured, results);
}

void ChargerParameterPanel::ShowResults(const ChargerMeasured& measured, const ChargerParameters& results) {
  const std::array lines{"CCtoCV_Voltage = 0x" + HexText(measured.x),
                         "CVtoFull_ChargeCurrent = 0x" + HexText(results.cvCut),
                         "CCDAC_Value = 0x" + HexText(results.ccDac), "CVDAC_Value = 0x" + HexText(measured.d),
                         "ShutDown_Voltage = 0x" + HexText(measured.y)};
  if (resultList_ != nullptr) {
    resultList_->Clear();
    for (const auto& line : lines) resultList_->AddItem(line);
    return;
  }
  panel_->txtChargerDisplay.SetText("");
  for (const auto& line : lines) console_.AppendConsole(panel_->txtChargerDisplay, line + "\r\n");
  throw StationFailure("Object missing: frmBaseBand has no list for the calculated parameters.");
}

void ChargerParameterPanel::WriteFlash() {
  if (!IsThere(panel_->txtCC2CVADC, "4.2V ADC Value is needed.") ||
      !IsThere(panel_->txtShutDownADC, "3.35V ADC Value is needed.")) {
    report_.Flaw("A charger count was missing: nothing was written.");
    return;
  }
  if (!link_.InTestMode()) {
    report_.Flaw("The station is not in test mode: the charger counts were not written.");
    return;
  }
  if (!link_.PortOpen()) {
    report_.Flaw("The serial port was closed: the charger counts were not written.");
    boxes_.Warning(kNotInitialized);
    return;
  }
  const std::string fullCount = panel_->txtCC2CVADC.Text();
  const std::string shutDownCount = panel_->txtShutDownADC.Text();
  const std::string write = "stw 100 " + fullCount + ",0x0000,0x0000,0x0000," + shutDownCount;
  link_.RunTargetCommand(write);
  if (!link_.Succeeded()) {
    FailFlash(write);
    return;
  }
  // Behind the table's number: five words, as they went out.
  constexpr int kTableBytes = 10;
  report_.Keep("flash.100", [this] { return link_.SentData(1 + kTableBytes).substr(1); });
  link_.PaceDelay(3);
  panel_->txtChargerDisplay.SetText("");
  link_.RunTargetCommand("str 100");
  if (!link_.Succeeded()) {
    FailFlash("str 100");
    return;
  }
  // The decoder shows what the Target keeps, in the form that the boxes have.
  const std::string& shown = panel_->txtChargerDisplay.Text();
  if (shown.find("CV_START_VOLTAGE     = " + fullCount + "\r\n") == std::string::npos ||
      shown.find("SHUTDOWN_VOLTAGE    = " + shutDownCount + "\r\n") == std::string::npos) {
    report_.Flaw("The Target's flash reads back other counts than were written.");
  }
}

void ChargerParameterPanel::FailFlash(const std::string& command) {
  report_.Flaw("\"" + command + "\" did not succeed.");
  boxes_.Warning("Battery Cal is not completed. Try again.");
  cal_.CalFailed = true;
  cal_.CalStopRequested = true;
}

}  // namespace orvane
