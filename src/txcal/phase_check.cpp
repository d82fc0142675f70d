#include "txcal/phase_check.h"

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr int kHighestPeak = 20;
constexpr int kHighestRms = 5;

std::optional<double> FrequencyErrorOf(std::string_view field) {
  std::optional<double> hertz;
  PassOver([&] { hertz = ToDouble(TrimBlanksAndLineEnds(field.substr(0, field.find(',')))); });
  return hertz;
}

}  // namespace

PhaseError PhaseErrorOf(std::string_view reading) {
  std::array<std::string_view, 3> fields;
  std::string_view rest = reading;
  for (std::string_view& field : fields) {
    const auto comma = rest.find(',');
    if (comma == std::string_view::npos) {
      throw StationFailure("The phase error reading has too few values: \"" + std::string(reading) + "\".");
    }
    field = rest.substr(0, comma);
    rest.remove_prefix(comma + 1);
  }
  return {Decimal4::FromText(fields[1]), Decimal4::FromText(fields[2]), FrequencyErrorOf(rest)};
}

void PhaseCheck::Run(const BandRow& band) {
  if (!steps_.ClearAndTune(band) || !steps_.TestSetReady()) return;
  for (const TestSetLine& line : band.phaseLines) {
    parts_.testSet.WriteShown(LineForEveryKind(line.purpose, steps_.ValueOf(line.value, band)));
  }
  steps_.Pace(101);
  if (!steps_.Command("rfe 2", 51)) return;

  const PhaseError error = PhaseErrorOf(Measured());
  const auto addRow = [&](std::string_view what, Decimal4 value) {
    parts_.results->listChanCalPowerLevel.AddItem(std::string(what) + "(" + std::string(band.name) + ")\t" +
                                                  std::string(band.phaseChannel) + "\t" + value.Text());
  };
  addRow("Peak", error.peak);
  addRow("RMS", error.rms);
  TellReadings(band, error);
  if (!steps_.Command("rfe 0", 0)) return;
  Judge(band, "Peak", "peak", error.peak, kHighestPeak);
  Judge(band, "Rms", "RMS", error.rms, kHighestRms);
  steps_.Pace(6);
}

void PhaseCheck::TellReadings(const BandRow& band, const PhaseError& error) {
  const std::string name = "tx." + std::string(BandWord(band.record));
  parts_.report.Read({name + ".phase.rms", error.rms.ToDouble(), "degree", std::nullopt, kHighestRms});
  parts_.report.Read({name + ".phase.peak", error.peak.ToDouble(), "degree", std::nullopt, kHighestPeak});
  if (error.frequency) parts_.report.Read({name + ".frequency_error", *error.frequency, "hertz"});
}

std::string PhaseCheck::Measured() {
  TestSet& testSet = parts_.testSet;
  for (const std::string& line :
       {LineForEveryKind(Purpose::TxPowerContinuousOff), LineForEveryKind(Purpose::TxPowerSamples, "5"),
        LineForEveryKind(Purpose::TxPowerTriggerAuto), LineForEveryKind(Purpose::PhaseErrorSync)}) {
    testSet.Write(line);
    steps_.Pace(1);
  }
  testSet.Write(LineForEveryKind(Purpose::PhaseErrorInitiate));
  steps_.Pace(101);
  testSet.Write(LineForEveryKind(Purpose::PhaseErrorFetch));
  steps_.Pace(11);
  std::string reading = testSet.Read();
  parts_.console.Append(reading + std::string(kLineEnd));
  return reading;
}

void PhaseCheck::Judge(const BandRow& band, std::string_view what, std::string_view inReport, Decimal4 value,
                       int limit) {
  if (value <= limit) return;
  parts_.report.Flaw(std::string(band.name) + " " + std::string(inReport) + " phase error " + value.Text() +
                         " is above " + std::to_string(limit) + ".",
                     FlawKind::OutOfTolerance);
  parts_.boxes.Warning(std::string(band.name) + " " + std::string(what) + " Phase error.");
}

}  // namespace orvane
