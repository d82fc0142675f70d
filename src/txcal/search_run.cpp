#include "txcal/search_run.h"

#include <cmath>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr int kHighestPower = 40;

/// The longest sound search walks from one DAC limit to the other in steps of one. What takes more passes swings
/// around its target and would never end.
constexpr int kMostPasses = 1100;

/// A limit with the places of the numbers that it is made of. It may be larger than they can be.
double LimitOf(double value) {
  constexpr double kPlaces = 10000;
  return std::round(value * kPlaces) / kPlaces;
}

}  // namespace

bool SearchRun::Run(const SearchRow& row, PowerSearch& search, const SearchSubject& subject) {
  const TrailedSearch trailed(parts_.trail, subject, search.Target(), search.Tolerance());
  while (!search.OnTarget() && !search.AtLimit()) {
    if (steps_.Stopped(11, "at " + subject.name)) return false;
    const std::optional<Decimal4> measured = MovedAndMeasured(row, search, subject.name);
    if (!measured) return false;
    // The row shows the DAC and the power; the tolerance setting is read after it, pass by pass.
    search.Take(*measured);
    ((*parts_.results).*row.passList).AddItem(std::to_string(search.Dac()) + "\t" + measured->Text());
    search.Settle(Decimal4::FromText(parts_.panel->txtErrorRate.Text()));
    parts_.trail.Pass({search.Dac(), *measured, search.Tolerance()});
    if (search.NearEnough()) break;
    if (search.Passes() >= kMostPasses) {
      throw StationFailure("The power does not settle at " + subject.name + ": " + std::to_string(kMostPasses) +
                           " passes have not found it. Check the Target's transmitter, the cable and the test set.");
    }
  }
  TellFlaws(search, subject.name);
  TellReadings(search, subject);
  parts_.trail.Accept(search.Dac(), search.Measured(), search.OnTarget());
  return true;
}

std::optional<Decimal4> SearchRun::MovedAndMeasured(const SearchRow& row, PowerSearch& search,
                                                    const std::string& subject) {
  const Integer dac = search.Move();
  const std::string command = "txpw 4 " + std::to_string(dac);
  if (row.dacMustSucceed) {
    if (!steps_.Command(command, 6)) return std::nullopt;
  } else {
    parts_.link.RunTargetCommand(command);
    steps_.Pace(6);
  }
  if (TakesReadings()) {
    if (!ReadPower(row, dac, subject)) return std::nullopt;
  } else if (const std::string line = parts_.testSet.Line(Purpose::TxPowerFetch); !line.empty()) {
    // Nobody fetches the answer: the search goes on with what the box holds.
    parts_.testSet.Write(line);
  }
  return PowerInBox(row, subject);
}

bool SearchRun::ReadPower(const SearchRow& row, Integer dac, const std::string& subject) {
  if (row.tellsTimeOut) parts_.testSet.Write(parts_.testSet.Line(Purpose::TxPowerTimeOut));
  ReadOnce(dac);
  const TextBox& reading = parts_.panel->txtPeakPower;
  if (!IsEmptyReading(reading.Text())) return true;
  parts_.report.Flaw("The test set gave an empty reading at " + subject + ".");
  for (int retry = 0; retry < row.retries; ++retry) {
    const auto raised = CheckedInteger(dac + row.retryRaise);
    if (!steps_.Command("txpw 4 " + std::to_string(raised), 0)) return false;
    ReadOnce(raised);
    if (row.retryCanSucceed && !IsEmptyReading(reading.Text())) return true;
  }
  if (!row.emptyFailsUnit) return true;
  parts_.report.Flaw("No power could be measured at " + subject + ".");
  parts_.boxes.Warning("Can't measure Power.");
  parts_.cal.CalStopRequested = true;
  parts_.cal.CalFailed = true;
  return false;
}

void SearchRun::ReadOnce(Integer dac) {
  TestSet& testSet = parts_.testSet;
  testSet.Write(testSet.Line(Purpose::TxPowerInitiate));
  steps_.Pace(6);
  testSet.Write(testSet.Line(Purpose::TxPowerFetch));
  steps_.Pace(4);
  parts_.panel->txtPeakPower.SetText(testSet.Read());
  measuredAt_ = dac;
}

std::optional<Decimal4> SearchRun::PowerInBox(const SearchRow& row, const std::string& subject) {
  const std::string text = parts_.panel->txtPeakPower.Text();
  // Judged ahead of the conversion in one case and behind it in the other: "9.91E+37", which some test sets send for
  // no reading, is too high there and an overflow here.
  if (!row.highFailsUnit || ToDouble(text) <= kHighestPower) {
    const Decimal4 measured = Decimal4::FromText(text);
    if (row.highFailsUnit || measured.ToInteger() <= kHighestPower) return measured;
  }
  parts_.report.Flaw("The reading at " + subject + " is too high: " + std::string(TrimBlanksAndLineEnds(text)) + ".");
  parts_.boxes.Warning(std::string(row.highMessage));
  parts_.cal.CalStopRequested = true;
  if (row.highFailsUnit) parts_.cal.CalFailed = true;
  steps_.PaintStop(kRed);
  return std::nullopt;
}

void SearchRun::TellReadings(const PowerSearch& search, const SearchSubject& subject) {
  const std::string name = ReadingNameOf(subject);
  if (search.Passes() > 0 && TakesReadings()) {
    const double target = search.Target().ToDouble();
    const double tolerance = search.Tolerance().ToDouble();
    parts_.report.Read({name + ".power", search.Measured().ToDouble(), "dBm", LimitOf(target - tolerance),
                        LimitOf(target + tolerance)});
  }
  parts_.report.Read({name + ".dac", static_cast<double>(search.Dac()), "count", 0, kDacLimit});
}

void SearchRun::TellFlaws(const PowerSearch& search, const std::string& subject) {
  const std::string dac = std::to_string(search.Dac());
  if (search.Passes() == 0) {
    parts_.report.Flaw(subject + " was never measured; DAC " + dac + " stands untried.");
    return;
  }
  if (TakesReadings() && measuredAt_ != search.Dac()) {
    parts_.report.Flaw(subject + " was measured at DAC " + std::to_string(measuredAt_) + ", but " + dac + " stands.");
  }
  if (!search.OnTarget()) {
    parts_.report.Flaw(
        subject + " stopped at DAC " + dac + ", " + search.Error().Abs().Text() + " dB from its target.",
        FlawKind::OutOfTolerance);
  }
}

}  // namespace orvane
