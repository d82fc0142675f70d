#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "bench/handset.h"

/// What the handset's own files share: the items of its parameter commands and the making of plain replies.
namespace orvane::bench {

inline constexpr std::size_t kBroadcastChannel = 1;  // rf
inline constexpr std::size_t kTrafficChannel = 2;
inline constexpr std::size_t kAfcDac = 9;
inline constexpr std::size_t kAgc = 1;         // rx
inline constexpr std::size_t kPowerLevel = 1;  // tx
inline constexpr std::size_t kPowerControl = 4;
inline constexpr std::size_t kAdcEnable = 19;  // misc
inline constexpr std::size_t kBatteryMillivolts = 20;
inline constexpr std::size_t kBatteryRaw = 30;
inline constexpr std::size_t kChargerRaw = 31;
inline constexpr std::size_t kZeroCalRaw = 32;
inline constexpr std::size_t kCurrentMode = 127;
inline constexpr std::uint16_t kAddress = 1;  // special

// Arguments of "rfe".
inline constexpr int kMeasurePower = 1;
inline constexpr int kTransmit = 2;

[[nodiscard]] inline std::uint16_t WordAt(std::span<const std::uint8_t> data, std::size_t at) {
  return static_cast<std::uint16_t>(data[at] | data[at + 1] << 8);
}

inline void AppendWord(Bytes& bytes, std::uint16_t word) {
  bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(word >> 8));
}

[[nodiscard]] inline Bytes PlainReply(Op operation, Status status = Status::kDone, Bytes data = {}) {
  return PaddedFrame({static_cast<std::uint8_t>(operation), static_cast<std::uint8_t>(status), std::move(data)});
}

}  // namespace orvane::bench
