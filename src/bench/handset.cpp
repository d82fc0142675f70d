#include "bench/handset.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "bench/handset_parts.h"

namespace orvane::bench {
namespace {

constexpr std::uint64_t kReceiverStream = 3;
constexpr std::uint64_t kAdcStream = 4;

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
  if (fixture_.powerLost) {
    StartAfresh();
    fixture_.powerLost = false;
  }
  return fixture_.TargetPowered();
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
      statsConfig_[data[0]] = WordAt(data, 4);
      break;
    case Op::kRfWrite:
      rf_[data[0]] = WordAt(data, 2);
      break;
    case Op::kRxWrite:
      rx_[data[0]] = WordAt(data, 2);
      break;
    case Op::kTxWrite:
      return PlainReply(operation, WriteTransmitter(data[0], WordAt(data, 2)));
    case Op::kMiscWrite:
      misc_[data[0]] = WordAt(data, 2);
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
      special_[WordAt(data, 0)] = WordAt(data, 2);
      address_ = WordAt(data, 0) == kAddress ? WordAt(data, 2) : address_;
      break;
    case Op::kSpecialRead: {
      Bytes value{data[0]};
      AppendWord(value, special_[WordAt(data, 0)]);
      return PlainReply(operation, Status::kDone, value);
    }
    case Op::kTableWrite:
      return WriteTable(data);
    case Op::kTableRead:
      return ReadTable(data);
    case Op::kSpecialEnable:
      return PlainReply(operation, WordAt(data, 0) != 1 || memory_.Commit() ? Status::kDone : Status::kStoreFailed);
  }
  return PlainReply(operation);
}

Bytes Handset::ReadItem(Op operation, std::span<const std::uint8_t> data, const Values& values) const {
  Bytes value{data[0]};
  AppendWord(value, values[data[0]]);
  return PlainReply(operation, Status::kDone, value);
}

}  // namespace orvane::bench
