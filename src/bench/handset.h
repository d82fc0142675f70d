#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "bench/fixture.h"
#include "bench/memory.h"
#include "bench/operations.h"
#include "bench/random.h"
#include "bench/unit.h"
#include "bench/wire_codec.h"

namespace orvane::bench {

/// What is broken in a unit, beyond the spread of good ones.
struct Defects {
  bool paDead = false;
  double paMissingDb = 0;  ///< off the greatest power
  double receiverDb = 0;
  bool receiverDead = false;
  double rmsPhaseDeg = 0;  ///< in place of the unit's own; 0: none
  double adcCounts = 0;
  bool noCharger = false;
};

/// Failure statuses of this handset.
enum class Status : std::uint8_t { kDone = 0x00, kBadValue = 0x02, kNoSuchTable = 0x03, kStoreFailed = 0x05 };

/// The Target behind its serial line: commands in, replies out, and a radio and an ADC that the fixture joins to
/// the instruments. It answers in every test mode alike.
class Handset {
 public:
  Handset(Fixture& fixture, Memory memory, std::uint64_t seed);

  /// The reply's frame; empty when the handset says nothing: an operation that it has not, a frame with too few or
  /// too many data bytes, no power.
  [[nodiscard]] Bytes Answer(const Command& command);

  void SetDefects(const Defects& defects);
  [[nodiscard]] const Memory& Kept() const { return memory_; }
  [[nodiscard]] const UnitTraits& Unit() const { return unit_; }

 private:
  using Values = std::array<std::uint16_t, 256>;

  [[nodiscard]] Bytes Carry(Op operation, std::span<const std::uint8_t> data);
  [[nodiscard]] Bytes ReadItem(Op operation, std::span<const std::uint8_t> data, const Values& values) const;
  [[nodiscard]] Bytes ReadStatistics(std::span<const std::uint8_t> data) const;
  [[nodiscard]] Bytes WriteTemplate(std::span<const std::uint8_t> data);
  [[nodiscard]] Bytes ReadTemplate(std::span<const std::uint8_t> data) const;
  [[nodiscard]] Bytes WriteTable(std::span<const std::uint8_t> data);
  [[nodiscard]] Bytes ReadTable(std::span<const std::uint8_t> data);

  Status WriteTransmitter(std::uint8_t item, std::uint16_t value);
  void Enable(int activity);
  void ReadAdc(std::uint8_t item);
  [[nodiscard]] bool Powered();
  void StartAfresh();
  void Radiate();

  Fixture& fixture_;
  Memory memory_;
  UnitTraits unit_;
  Defects defects_;
  Random receiverNoise_;
  Random adcNoise_;

  Values rf_{};
  Values rx_{};
  Values tx_{};
  Values misc_{};
  std::map<std::uint16_t, std::uint16_t> special_;
  std::map<std::uint16_t, std::uint16_t> statsConfig_;
  std::array<std::array<std::uint8_t, 32>, 31> ramps_{};
  std::map<std::uint8_t, Bytes> tables_;
  std::size_t address_ = 0;
  int activity_ = 0;
  int commandsOnAir_ = 0;          ///< warm the transmitter up
  std::uint16_t powerReport_ = 0;  ///< six fraction bits
  std::uint16_t levelReport_ = 0;  ///< one fraction bit
};

}  // namespace orvane::bench
