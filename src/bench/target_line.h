#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

#include "bench/bytes.h"
#include "bench/faults.h"
#include "bench/handset.h"
#include "bench/wire_codec.h"

namespace orvane::bench {

using Span = std::chrono::nanoseconds;

/// 115200 baud, eight data bits, no parity, one stop bit: ten bits a byte, 86.8 us.
inline constexpr Span kByteTime{10 * 1'000'000'000LL / 115'200};

/// From the last byte of a command to the first bit of its reply.
inline constexpr Span kTurnAround{300'000};

/// Bytes that a serial port hands over at once: the usual trigger level of its receive buffer.
inline constexpr std::size_t kReceiveFifo = 14;

/// For whoever wants to show what went over a link.
struct LinkCounters {
  std::uint64_t commands = 0;  ///< sound frames, or lines
  std::uint64_t bytesIn = 0;   ///< to the bench
  std::uint64_t bytesOut = 0;
};

/// What the Target sends, and how long after the command's last byte its first bit starts.
struct Transmission {
  Bytes bytes;
  Span delay = kTurnAround;
};

/// The Target's end of the serial line, with the faults that sit on it.
class TargetLine {
 public:
  TargetLine(Handset& handset, FaultBoard& faults);

  /// Another handset stands where the one before did: nothing of its predecessor's is under way.
  void TakeUp();

  /// Takes bytes that have arrived; each sound command is carried out at once.
  [[nodiscard]] std::vector<Transmission> Receive(std::span<const std::uint8_t> bytes);

  /// The device has vanished from its port.
  [[nodiscard]] bool Unplugged() const { return faults_.Acts(FaultKind::kUnplugged); }
  [[nodiscard]] const LinkCounters& Counters() const { return counters_; }

 private:
  [[nodiscard]] Transmission Answer(const Command& command);
  [[nodiscard]] Defects PresentDefects() const;

  Handset& handset_;
  FaultBoard& faults_;
  CommandReader reader_;
  LinkCounters counters_;
};

}  // namespace orvane::bench
