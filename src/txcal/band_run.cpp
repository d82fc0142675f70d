#include "txcal/band_run.h"

#include <algorithm>

#include "base/text.h"
#include "link/transfer_watch.h"

namespace orvane {
namespace {

constexpr Decimal4 kToleranceAtStart = "0.25"_d4;

std::string LevelName(const BandRow& band, int level) {
  return std::string(band.name) + " level " + std::to_string(level);
}

}  // namespace

bool BandRun::Run(const BandRow& band) {
  parts_.cal.*band.done = false;
  if (!MayStart(band)) return false;
  for (const std::string& damage : {parts_.cal.lossDamage, parts_.ramp.damage}) {
    if (!damage.empty()) parts_.report.Flaw(damage);
  }
  if (band.showsResults) ShowResults();
  if (!steps_.ClearAndTune(band) || !steps_.TestSetReady()) return false;
  SetUpTestSet(band);
  if (!MayTransmit(band)) return false;
  if (!SendRampTables(band) || !TransmitterOn(band)) return false;
  if (!searchRun_.TakesReadings()) parts_.report.Flaw("No power readings are taken from the selected test set.");

  parts_.results->listPowerLevel.AddItem(std::string(band.powerLevelHead));
  parts_.results->listPeakPower.AddItem(std::string(band.peakPowerHead));
  parts_.trail.BeginBand(band.record);
  PowerSearch search(band.levelSearch.numbers, band.powerAtStart, kToleranceAtStart);
  for (int level = band.weakestLevel; level >= band.strongestLevel; --level) {
    if (!FindLevel(band, level, search)) return false;
  }
  return true;
}

// In the transmit part of a whole run a pending stop cancels the band; one left over from before is forgotten by a
// band that was started by hand.
bool BandRun::MayStart(const BandRow& band) {
  if (!parts_.cal.CalStopRequested) return true;
  if (parts_.cal.CalMode == "TxALL") {
    parts_.report.Flaw("Stopped ahead of the " + std::string(band.name) + " band.");
    steps_.PaintStop(kRed);
    parts_.link.RunTargetCommand("rfe 0");
    return false;
  }
  parts_.cal.CalStopRequested = false;
  steps_.PaintStop(kButtonFace);
  return true;
}

void BandRun::ShowResults() {
  parts_.results->ShowBeside();
  parts_.results->listPeakPower.Clear();
  parts_.results->listPowerLevel.Clear();
}

void BandRun::SetUpTestSet(const BandRow& band) {
  std::string before;
  const auto send = [&](const TestSetLine& line) {
    const std::string text = parts_.testSet.Line(line.purpose, steps_.ValueOf(line.value, band));
    parts_.testSet.Write(text);
    parts_.console.Append((band.echoLags && line.lags ? before : text) + std::string(kLineEnd));
    before = text;
  };
  send({band.bandLine});
  for (const TestSetLine& line : kCommonSetUpLines) send(line);
  if (parts_.testSet.Kind() == Dialect::Hp8960) {
    for (const TestSetLine& line : kHp8960SetUpLines) send(line);
  }
  steps_.Pace(3 + 101);
}

bool BandRun::MayTransmit(const BandRow& band) {
  if (parts_.cal.CalStopRequested) {
    parts_.report.Flaw("Stopped ahead of the first " + std::string(band.name) + " level.");
    steps_.TransmitterOff(11);
    return false;
  }
  const auto& table = parts_.ramp.RampTable[0];
  const auto isEmpty = [](const std::string& value) { return value.empty(); };
  if (!band.testsRampTable || std::none_of(table.begin(), table.begin() + kRampValues / 2, isEmpty)) return true;
  parts_.report.Flaw("Ramp table 0 is not complete.");
  parts_.boxes.Warning("Ramp Table is not Correct or not exists.");
  parts_.results->listPeakPower.Clear();
  parts_.results->listPowerLevel.Clear();
  parts_.cal.CalStopRequested = true;
  steps_.PaintStop(kRed);
  return false;
}

bool BandRun::SendRampTables(const BandRow& band) {
  const bool sentBefore = parts_.cal.DcsCalDone || parts_.cal.SpareCalDone;
  if (sentBefore && !band.alwaysSendsRamps) return true;
  constexpr std::size_t kTypicalLine = 200;
  TransferWatch watch(parts_.link, parts_.cal);
  for (int table = 0; table < kRampTables; ++table) {
    std::string line;
    line.reserve(kTypicalLine);
    line.append("ttw ").append(std::to_string(table)).append(" ");
    for (const std::string& value : parts_.ramp.RampTable[static_cast<std::size_t>(table)]) {
      line += value;
      line += ',';
    }
    if (watch.Stopped()) return !steps_.Stopped(11, "ahead of ramp table " + std::to_string(table));
    parts_.link.RunTargetCommand(line);
    watch.PieceSent();
  }
  steps_.Pace(11);
  return true;
}

bool BandRun::TransmitterOn(const BandRow& band) {
  if (band.selectsLevelFirst && !steps_.Command("txpw 1 " + std::to_string(band.weakestLevel), 6)) return false;
  return steps_.Command("rfe 2", band.pacesAfterTransmitterOn);
}

bool BandRun::FindLevel(const BandRow& band, int level, PowerSearch& search) {
  const std::string name = LevelName(band, level);
  if (steps_.Stopped(6, "ahead of " + name)) return false;
  if (!steps_.Command("txpw 1 " + std::to_string(level + band.levelWordOffset), 6)) return false;
  const std::size_t position = band.PositionOf(level);
  const Decimal4 target = parts_.cal.PowerIndex.at(position);
  steps_.ExpectPower(target);
  search.Begin(target, parts_.cal.InitValueIndex.at(position));
  steps_.Pace(11);
  if (level == band.weakestLevel) SetUpSamples(band);
  if (!searchRun_.Run(band.levelSearch, search, {band.record, SearchSubject::Kind::Level, level, name})) return false;
  parts_.results->listPowerLevel.AddItem(std::to_string(search.Dac()) + "\t" + std::to_string(level) + "\t" +
                                         search.Measured().Text());
  parts_.rf.RFParams.BAND.at(band.record).tx_Level.at(static_cast<std::size_t>(level)).apc = search.Dac();
  return true;
}

void BandRun::SetUpSamples(const BandRow& band) {
  if (parts_.testSet.Kind() != Dialect::Hp8960) return;
  for (const std::string& line : {parts_.testSet.Line(Purpose::TxPowerContinuousOff),
                                  parts_.testSet.Line(Purpose::TxPowerSamples, band.samples),
                                  parts_.testSet.Line(Purpose::TxPowerTriggerAuto)}) {
    parts_.testSet.Write(line);
    steps_.Pace(1);
  }
}

}  // namespace orvane
