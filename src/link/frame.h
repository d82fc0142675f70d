#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "state/frame_data.h"

namespace orvane {

/// The two bytes ahead of every frame, and those that mean something inside one.
inline constexpr std::string_view kSync = "\x02\x14";
inline constexpr Integer kTerminator = 0x02;
inline constexpr Integer kEscape = 0x10;

/// Length of what follows the sync bytes; the bytes behind the terminator are zero.
inline constexpr int kFrameBodySize = 51;

/// One byte: the operation code and the first `count` data exclusive-or'ed, as they are before escaping.
[[nodiscard]] Integer ChecksumOf(Integer operation, Integer count, const FrameData& data);

/// Puts an escape ahead of each data byte 0x02 and 0x10, in place. The scan ends ten places behind the data as they
/// came in, so what more than ten escapes have pushed beyond that place goes unescaped.
/// @throws StationFailure when the data outgrow the array.
void EscapeData(FrameData& data, Integer& count);

/// The first `count` data as they were before they were escaped, a byte each.
[[nodiscard]] std::string PlainData(const FrameData& escaped, int count);

/// What follows the sync bytes of a command: operation code, the escaped data, the checksum with its own escape, the
/// terminator, zeros.
/// @throws StationFailure for a value that is no byte, or a terminator that lies beyond the body.
[[nodiscard]] std::array<char, kFrameBodySize> FrameBody(Integer operation, Integer count, const FrameData& escaped,
                                                         Integer checksum);

}  // namespace orvane
