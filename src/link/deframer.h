#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orvane {

/// Most bytes that one gathering may hold.
inline constexpr std::size_t kGatheredLimit = 200;

/// How replies are laid out: in the padded layout every value has a pad byte ahead of it, so an escape stands two
/// places ahead of what it protects; in the plain one it stands one ahead.
enum class ReplyLayout { Padded, Plain };

/// Where a frame stands among the gathered bytes: its first byte and its terminator.
struct FrameSpan {
  int start;
  int end;
};

/// The first frame: 02 14 up to the first 02 that no escape protects.
[[nodiscard]] std::optional<FrameSpan> FindFrame(std::string_view gathered, ReplyLayout layout);

/// Gathered bytes without their escapes and, where there is a frame, with the pads worked in.
struct Deframed {
  /// The first `count` are set. A value of 0x80 or more behind a pad of 01 has outgrown its byte: up to 383.
  std::array<std::uint16_t, kGatheredLimit> values;
  int count = 0;
  /// Its end is moved by every escape removed, wherever that stood; its start by none.
  std::optional<FrameSpan> frame;
  /// Bytes ahead of the frame or behind it.
  bool stray = false;
};

/// Takes out escapes all over the gathered bytes, then adds 128 behind each pad of 01 (padded layout, when there is a
/// frame). Pads are looked for at even places from 6 on, counted from the first gathered byte even if a frame starts
/// later. `gathered` has at most 200 bytes.
[[nodiscard]] Deframed Deframe(std::string_view gathered, ReplyLayout layout);

}  // namespace orvane
