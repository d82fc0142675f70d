#include "txcal/run_steps.h"

namespace orvane {
namespace {

constexpr int kPacesAfterCommand = 6;

}  // namespace

bool RunSteps::Command(const std::string& line, int paces) {
  parts_.link.RunTargetCommand(line);
  if (parts_.link.Succeeded()) {
    if (paces > 0) Pace(paces);
    return true;
  }
  parts_.report.Flaw("\"" + line + "\" " +
                     (parts_.link.Silent() ? "brought no reply."
                                           : "failed with status " + std::to_string(parts_.link.Status()) + "."));
  return false;
}

bool RunSteps::ClearAndTune(const BandRow& band) {
  const TextBox& channel = (*parts_.panel).*band.channel;
  return Command("txpw 8 0", kPacesAfterCommand) && Command("txpw 9 0", kPacesAfterCommand) &&
         Command("rfpw 2 " + channel.Text(), kPacesAfterCommand) &&
         Command("rfpw 1 " + channel.Text(), kPacesAfterCommand);
}

bool RunSteps::Tune(const std::string& channel) {
  return Command("rfpw 2 " + channel, kPacesAfterCommand) && Command("rfpw 1 " + channel, kPacesAfterCommand);
}

bool RunSteps::TestSetReady() {
  if (parts_.testSet.Ready()) return true;
  parts_.boxes.Warning("Initialize Test Set at first.");
  parts_.report.Flaw("The test set is not initialized.");
  return false;
}

bool RunSteps::Stopped(int pacesAfterOff, const std::string& where) {
  if (!parts_.cal.CalStopRequested) return false;
  parts_.report.Flaw("Stopped " + where + ".");
  PaintStop(kRed);
  TransmitterOff(pacesAfterOff);
  return true;
}

void RunSteps::TransmitterOff(int pacesAfter) {
  parts_.link.RunTargetCommand("rfe 0");
  if (parts_.link.Succeeded()) Pace(pacesAfter);
}

void RunSteps::ExpectPower(Decimal4 target) {
  parts_.testSet.WriteShown(parts_.testSet.Line(Purpose::ExpectedPower, std::to_string(target.ToInteger())));
  Pace(2);
}

std::string RunSteps::ValueOf(LineValue value, const BandRow& band) {
  switch (value) {
    case LineValue::None:
      break;
    case LineValue::Channel:
      return ((*parts_.panel).*band.channel).Text();
    case LineValue::Loss:
      return ((*parts_.panel).*band.loss).Text();
    case LineValue::StartLevel:
      return std::string(parts_.testSet.Kind() == Dialect::Hp8922M ? band.mobileLevelHp8922M
                                                                   : band.mobileLevelHp8960);
    case LineValue::StrongestLevel:
      return std::to_string(band.strongestLevel);
    case LineValue::Downlink:
      return "BCHTCH";
  }
  return "";
}

}  // namespace orvane
