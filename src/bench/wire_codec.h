#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "bench/bytes.h"

/// The Target's side of the test-mode line. It shares nothing with the station's own codec, so that one
/// mistake cannot hide on both sides.
namespace orvane::bench {

/// Every command is this long on the wire, whatever it carries: the rest is zero fill.
inline constexpr std::size_t kCommandFrameSize = 53;

struct Command {
  std::uint8_t operation = 0;
  Bytes data;
};

/// Finds command frames in a stream of bytes: `02 14`, operation, escaped data, escaped checksum, `02`, zeros.
/// Whatever is no sound frame of 53 bytes is passed over in silence, and the search goes on one byte further;
/// so garbage, a frame cut short or a bad checksum never costs the sound frame behind it.
class CommandReader {
 public:
  void Feed(std::span<const std::uint8_t> bytes);

  /// The next sound frame, good until the one after it is asked for; null until more bytes come.
  [[nodiscard]] const Command* Next();

 private:
  Bytes buffer_;
  std::size_t begin_ = 0;
  Command command_;
};

struct Reply {
  std::uint8_t operation = 0;
  std::uint8_t status = 0;  ///< 0x00..0x7F: the station adds nothing to it
  Bytes data;
};

/// The frame that the station expects of all replies but one: each value behind a pad byte, escapes ahead of
/// the pad, one bare `02` at the end.
[[nodiscard]] Bytes PaddedFrame(const Reply& reply);

/// The reply to a read of one ramp table: pads at the operation only, then row and values bare. The first
/// value stands where every other reply has its status.
[[nodiscard]] Bytes RampRowFrame(std::uint8_t operation, std::uint8_t row, std::span<const std::uint8_t> values);

}  // namespace orvane::bench
