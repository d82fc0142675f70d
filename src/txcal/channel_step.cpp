#include "txcal/channel_step.h"

#include <algorithm>
#include <cstdlib>

#include "platform/operation_nest.h"

namespace orvane {
namespace {

constexpr Decimal4 kToleranceAtStart = "0.1"_d4;
/// Beside the table of the codes, the one that gets this step's limits too.
constexpr int kCorrectionTable = 2;

/// Differences from which a code is one further away from the neutral one.
constexpr std::array kCodeBounds{10, 19, 29, 39};

}  // namespace

Integer ChannelCodeFor(const BandRow& band, int difference) {
  const auto distance =
      std::count_if(kCodeBounds.begin(), kCodeBounds.end(), [&](int bound) { return std::abs(difference) >= bound; });
  const bool below = difference < 0 && band.codesBothSides;
  return static_cast<Integer>(below ? kNeutralCode - distance : kNeutralCode + distance);
}

Integer FourthCodeOf(const ChannelCodes& codes) {
  return codes[1] != kNeutralCode && codes[2] != kNeutralCode ? codes[1] : kNeutralCode;
}

bool ChannelStep::Run(const BandRow& band) {
  ChannelCodes codes{};
  if (!MeasureAndStore(band, codes)) return false;
  if (!band.derivesFourthCode) return true;
  const bool stored = parts_.rf.RFParams.BAND.at(band.record).chan_cal(kCodeTable, 0).chan_cal != 0;
  if (!stored && !MeasureAndStore(band, codes)) return false;
  LookAfter(codes);
  return true;
}

void ChannelStep::LookAfter(const ChannelCodes& codes) {
  if (std::find(codes.begin(), codes.end(), 0) == codes.end()) return;
  parts_.report.Flaw("A channel code was not set.");
  parts_.boxes.Alarm("Tx CH CAL is not Completed. Re-Start.");
  const BoxButton answer = parts_.boxes.Show(
      {"Do you want to finish Orvane?", "Exit", BoxIcon::Exclamation, {BoxButton::Ok, BoxButton::Cancel}});
  if (answer == BoxButton::Ok) throw StationEnded();
}

bool ChannelStep::MeasureAndStore(const BandRow& band, ChannelCodes& codes) {
  Begin(band);
  const RFParameter::Band& record = parts_.rf.RFParams.BAND.at(band.record);
  const auto level = static_cast<std::size_t>(band.strongestLevel);
  for (std::size_t i = 0; i < band.calChannels.size(); ++i) {
    const int channel = band.calChannels[i];
    const std::optional<Integer> dac = FindDac(band, channel);
    if (!dac) return false;
    codes[i] = ChannelCodeFor(band, *dac - record.tx_Level.at(level).apc);
    parts_.results->listChanCalPowerLevel.AddItem(std::to_string(*dac) + "\t" + std::to_string(channel) + "\t" +
                                                  std::to_string(codes[i]));
    parts_.report.Read({ReadingNameOf({band.record, SearchSubject::Kind::Channel, channel, ""}) + ".code",
                        static_cast<double>(codes[i]), "count"});
  }
  if (band.derivesFourthCode) codes[3] = FourthCodeOf(codes);
  Store(band, codes);
  return true;
}

void ChannelStep::Begin(const BandRow& band) {
  if (band.startsNeutral) {
    for (RFParameter::Band& record : parts_.rf.RFParams.BAND) {
      for (const int table : {kCorrectionTable, kCodeTable}) {
        for (int segment = 0; segment < 8; ++segment) record.chan_cal(table, segment).chan_cal = kNeutralCode;
      }
    }
  }
  steps_.Pace(band.pacesAtChannelStep);
  if (band.startsNeutral) {
    parts_.results->listChanCalPeakPower.Clear();
    parts_.results->listChanCalPowerLevel.Clear();
  }
  parts_.results->listChanCalPeakPower.AddItem(std::string(band.channelPeakHead));
  parts_.results->listChanCalPowerLevel.AddItem(std::string(band.channelLevelHead));
}

std::optional<Integer> ChannelStep::FindDac(const BandRow& band, int channel) {
  const std::string name = std::string(band.name) + " channel " + std::to_string(channel);
  if (!TuneBoth(band, std::to_string(channel))) return std::nullopt;
  PowerSearch search(band.channelSearch.numbers, band.channelPowerAtStart, kToleranceAtStart);
  if (steps_.Stopped(6, "ahead of " + name)) return std::nullopt;
  const int level = band.strongestLevel;
  if (!steps_.Command("txpw 1 " + std::to_string(level + band.levelWordOffset), 6)) return std::nullopt;
  const std::size_t position = band.PositionOf(level);
  const Decimal4 target = parts_.cal.PowerIndex.at(position);
  steps_.ExpectPower(target);
  search.Begin(target, parts_.cal.InitValueIndex.at(position));
  steps_.Pace(11);
  const SearchSubject subject{band.record, SearchSubject::Kind::Channel, channel, name};
  if (!searchRun_.Run(band.channelSearch, search, subject)) return std::nullopt;
  parts_.results->listChanCalPeakPower.AddItem(std::to_string(search.Dac()) + "\t" + std::to_string(level) + "\t" +
                                               search.Measured().Text());
  return search.Dac();
}

bool ChannelStep::TuneBoth(const BandRow& band, const std::string& channel) {
  if (band.tunesFirst && !steps_.Tune(channel)) return false;
  // Every test set gets the first line, whatever its dialect.
  parts_.testSet.WriteShown(LineForEveryKind(Purpose::AnalyserChannel, channel));
  if (parts_.testSet.Kind() == Dialect::Hp8960) {
    parts_.testSet.WriteShown(parts_.testSet.Line(Purpose::BroadcastChannel, channel));
    parts_.testSet.WriteShown(parts_.testSet.Line(Purpose::TrafficChannel, channel));
  }
  steps_.Pace(band.pacesAfterChannelLines);
  return steps_.Tune(channel);
}

void ChannelStep::Store(const BandRow& band, const ChannelCodes& codes) {
  RFParameter::Band& record = parts_.rf.RFParams.BAND.at(band.record);
  int segment = 0;
  for (const SegmentRow& row : band.segments) {
    record.chan_cal(kCorrectionTable, segment).arfcn_limit = row.arfcnLimit;
    record.chan_cal(kCodeTable, segment) = {row.arfcnLimit, row.code ? codes.at(*row.code) : kNeutralCode};
    ++segment;
  }
}

}  // namespace orvane
