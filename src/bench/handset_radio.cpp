#include <algorithm>
#include <cmath>

#include "bench/handset_parts.h"

/// The handset's transmitter, receiver and ADC: where its registers meet the fixture.
namespace orvane::bench {
namespace {

constexpr int kLastDac = 1023;
constexpr int kDcsLevels = 100;
constexpr int kLastLevel = 31;

constexpr std::uint16_t kStatKindLevel = 1;
constexpr std::uint16_t kStatKindPower = 2;

constexpr double kNoiseFloorDbm = -108;

/// A quantity in an unsigned register, held at the register's ends.
std::uint16_t Register(double value) {
  return static_cast<std::uint16_t>(std::clamp(std::round(value), 0.0, 65535.0));
}

}  // namespace

Status Handset::WriteTransmitter(std::uint8_t item, std::uint16_t value) {
  if (item == kPowerControl && value > kLastDac) {
    return Status::kBadValue;
  }
  if (item == kPowerLevel) {
    // A DCS level travels as level + 100. Selecting a level takes its power control value from the EEPROM copy.
    const bool dcs = value >= kDcsLevels;
    const int level = dcs ? value - kDcsLevels : value;
    if (level > kLastLevel) {
      return Status::kBadValue;
    }
    const int apc = memory_.PowerControl(dcs ? 1 : 0, static_cast<std::size_t>(level));
    tx_[kPowerControl] = static_cast<std::uint16_t>(std::min(apc, kLastDac));
  }
  tx_[item] = value;
  return Status::kDone;
}

void Handset::Enable(int activity) {
  activity_ = activity;
  if (activity != kMeasurePower) {
    return;
  }
  const Downlink arriving = fixture_.AtTarget();
  const int arfcn = rf_[kBroadcastChannel];
  const double gain = ReceiveGainDb(unit_, arfcn, arriving.frequencyMHz) + defects_.receiverDb;
  const double floor = unit_.Of(BandOf(arfcn)).rxGainDb + defects_.receiverDb + kNoiseFloorDbm;
  const double input = std::max(arriving.levelDbm + gain, floor) + receiverNoise_.Bell(0.05);
  const double agc = static_cast<std::int16_t>(rx_[kAgc]);
  powerReport_ = defects_.receiverDead ? std::uint16_t{0} : Register((input + agc) * 64);
  // GSM's own level scale: 0 is -110 dBm.
  levelReport_ = defects_.receiverDead ? std::uint16_t{0} : Register((std::max(arriving.levelDbm, -110.0) + 110) * 2);
}

Bytes Handset::ReadStatistics(std::span<const std::uint8_t> data) const {
  const std::uint16_t kind = WordAt(data, 2);
  const bool power = data[0] == 1 && kind == kStatKindPower;
  const bool level = data[0] == 1 && kind == kStatKindLevel;
  Bytes report;
  report.reserve(3 * sizeof(std::uint16_t));
  AppendWord(report, WordAt(data, 0));
  AppendWord(report, kind);
  AppendWord(report, power ? powerReport_ : level ? levelReport_ : std::uint16_t{0});
  return PlainReply(Op::kStatsRead, Status::kDone, std::move(report));
}

void Handset::ReadAdc(std::uint8_t item) {
  const double volts = fixture_.BatteryVolts();
  switch (item) {
    case kBatteryMillivolts:
      misc_[item] = Register(volts * 1000);
      break;
    case kBatteryRaw:
      misc_[item] = Register(BatteryCounts(unit_, volts) + defects_.adcCounts + adcNoise_.Bell(1));
      break;
    case kChargerRaw:
      misc_[item] = Register((fixture_.chargerConnected && !defects_.noCharger ? 412 : 9) + adcNoise_.Bell(3));
      break;
    case kZeroCalRaw:
      misc_[item] = Register(unit_.zeroCalCounts + adcNoise_.Bell(1));
      break;
    default:
      break;
  }
}

void Handset::Radiate() {
  const bool transmitting = activity_ == kTransmit;
  fixture_.targetAmps = transmitting ? 0.31 : 0.08;
  fixture_.uplink.reset();
  if (!transmitting || defects_.paDead) {
    return;
  }
  constexpr double kWarmUpCommands = 200;
  constexpr double kHertzPerAfcStep = 0.9;
  const int arfcn = rf_[kTrafficChannel];
  const double warmth = 1 - std::exp(-commandsOnAir_ / kWarmUpCommands);
  double power = TransmitPowerDbm(unit_, arfcn, tx_[kPowerControl], warmth);
  if (defects_.paMissingDb > 0) {
    power = std::min(power, TransmitPowerDbm(unit_, arfcn, kLastDac, warmth) - defects_.paMissingDb);
  }
  const bool bad = defects_.rmsPhaseDeg > 0;
  const double rms = bad ? defects_.rmsPhaseDeg : unit_.rmsPhaseDeg;
  const double peak = bad ? 3.2 * defects_.rmsPhaseDeg : unit_.peakPhaseDeg;
  const int afc = static_cast<std::int16_t>(rf_[kAfcDac]);
  fixture_.uplink = Burst{arfcn, power, rms, peak, kHertzPerAfcStep * (afc - unit_.bestAfc)};
}

}  // namespace orvane::bench
