#include "bench/handset.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace orvane::bench {
namespace {

constexpr std::uint64_t kReceiverStream = 3;
constexpr std::uint64_t kAdcStream = 4;

// Items of the parameter commands.
constexpr std::size_t kBroadcastChannel = 1;  // rf
constexpr std::size_t kTrafficChannel = 2;    // rf
constexpr std::size_t kAfcDac = 9;            // rf
constexpr std::size_t kAgc = 1;               // rx
constexpr std::size_t kPowerLevel = 1;        // tx
constexpr std::size_t kPowerControl = 4;      // tx
constexpr std::size_t kAdcEnable = 19;        // misc
constexpr std::size_t kBatteryMillivolts = 20;
constexpr std::size_t kBatteryRaw = 30;
constexpr std::size_t kChargerRaw = 31;
constexpr std::size_t kZeroCalRaw = 32;
constexpr std::size_t kCurrentMode = 127;
constexpr std::uint16_t kAddress = 1;  // special

constexpr int kMeasurePower = 1;
constexpr int kTransmit = 2;
constexpr int kLastDac = 1023;
constexpr int kDcsLevels = 100;
constexpr int kLastLevel = 31;

constexpr std::uint16_t kStatKindLevel = 1;
constexpr std::uint16_t kStatKindPower = 2;

constexpr double kNoiseFloorDbm = -108;
constexpr double kBrownOutVolts = 2.8;

std::uint16_t Word(std::span<const std::uint8_t> data, std::size_t at) {
  return static_cast<std::uint16_t>(data[at] | data[at + 1] << 8);
}

void Append(Bytes& bytes, std::uint16_t word) {
  bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(word >> 8));
}

/// A quantity in an unsigned register, held at the register's ends.
std::uint16_t Register(double value) {
  return static_cast<std::uint16_t>(std::clamp(std::round(value), 0.0, 65535.0));
}

Bytes Plain(Op operation, Status status = Status::kDone, Bytes data = {}) {
  return PaddedFrame({static_cast<std::uint8_t>(operation), static_cast<std::uint8_t>(status), std::move(data)});
}

}  // namespace

Handset::Handset(Fixture& fixture, Memory memory, std::uint64_t seed)
    : fixture_(fixture),
      memory_(std::move(memory)),
      unit_(UnitOf(seed)),
      receiverNoise_(seed, kReceiverStream),
      adcNoise_(seed, kAdcStream) {
  StartAfresh();
}

void Handset::StartAfresh() {
  rf_.fill(0);
  rx_.fill(0);
  tx_.fill(0);
  misc_.fill(0);
  rf_[kBroadcastChannel] = rf_[kTrafficChannel] = 30;
  rf_[kAfcDac] = static_cast<std::uint16_t>(-1180);
  rx_[kAgc] = 40;
  misc_[kAdcEnable] = 1;
  special_.clear();
  statsConfig_.clear();
  tables_.clear();
  // A burst rises on a quarter of a sine and falls as it rose.
  constexpr std::size_t kRise = 16;
  for (auto& ramp : ramps_) {
    for (std::size_t i = 0; i < kRise; ++i) {
      const double angle = std::numbers::pi / 2 * static_cast<double>(i) / (kRise - 1);
      ramp[i] = static_cast<std::uint8_t>(std::lround(127 * std::sin(angle)));
      ramp[2 * kRise - 1 - i] = ramp[i];
    }
  }
  memory_.Restart();
  address_ = 0;
  activity_ = 0;
  powerReport_ = levelReport_ = 0;
  Radiate();
}

void Handset::SetDefects(const Defects& defects) {
  defects_ = defects;
  Radiate();
}

bool Handset::Powered() {
  const bool enough = fixture_.BatteryVolts() >= kBrownOutVolts;
  if (!enough && powered_) {
    StartAfresh();
  }
  powered_ = enough;
  return enough;
}

Bytes Handset::Answer(const Command& command) {
  const OperationRow* row = RowOfOperation(command.operation);
  const bool fits = row != nullptr && command.data.size() >= row->fewest && command.data.size() <= row->most;
  if (!Powered() || !fits) {
    return {};
  }
  Bytes reply = Carry(row->code, command.data);
  commandsOnAir_ += activity_ == kTransmit ? 1 : 0;
  Radiate();
  return reply;
}

Bytes Handset::Carry(Op operation, std::span<const std::uint8_t> data) {
  switch (operation) {
    case Op::kInit:
      break;
    case Op::kModeSet:
      misc_[kCurrentMode] = data[0] == 0 ? 0 : 1;
      break;
    case Op::kRfEnable:
      Enable(data[0]);
      break;
    case Op::kStatsRead:
      return ReadStatistics(data);
    case Op::kStatsConfigWrite:
      statsConfig_[data[0]] = Word(data, 4);
      break;
    case Op::kRfWrite:
      rf_[data[0]] = Word(data, 2);
      break;
    case Op::kRxWrite:
      rx_[data[0]] = Word(data, 2);
      break;
    case Op::kTxWrite:
      return Plain(operation, WriteTransmitter(data[0], Word(data, 2)));
    case Op::kMiscWrite:
      misc_[data[0]] = Word(data, 2);
      break;
    case Op::kRfRead:
      return ReadItem(operation, data, rf_);
    case Op::kRxRead:
      return ReadItem(operation, data, rx_);
    case Op::kTxRead:
      return ReadItem(operation, data, tx_);
    case Op::kMiscRead:
      ReadAdc(data[0]);
      return ReadItem(operation, data, misc_);
    case Op::kTemplateWrite:
      return WriteTemplate(data);
    case Op::kTemplateRead:
      return ReadTemplate(data);
    case Op::kSpecialWrite:
      special_[Word(data, 0)] = Word(data, 2);
      address_ = Word(data, 0) == kAddress ? Word(data, 2) : address_;
      break;
    case Op::kSpecialRead: {
      Bytes value{data[0]};
      Append(value, special_[Word(data, 0)]);
      return Plain(operation, Status::kDone, value);
    }
    case Op::kTableWrite:
      return WriteTable(data);
    case Op::kTableRead:
      return ReadTable(data);
    case Op::kSpecialEnable:
      return Plain(operation, Word(data, 0) != 1 || memory_.Commit() ? Status::kDone : Status::kStoreFailed);
  }
  return Plain(operation);
}

Bytes Handset::ReadItem(Op operation, std::span<const std::uint8_t> data, const Values& values) const {
  Bytes value{data[0]};
  Append(value, values[data[0]]);
  return Plain(operation, Status::kDone, value);
}

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
  const std::uint16_t kind = Word(data, 2);
  const bool power = data[0] == 1 && kind == kStatKindPower;
  const bool level = data[0] == 1 && kind == kStatKindLevel;
  Bytes report;
  Append(report, Word(data, 0));
  Append(report, kind);
  Append(report, power ? powerReport_ : level ? levelReport_ : std::uint16_t{0});
  return Plain(Op::kStatsRead, Status::kDone, report);
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
