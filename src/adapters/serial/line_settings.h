#pragma once

#include <termios.h>

#include <optional>
#include <string_view>

namespace orvane {

/// Speed and frame of a line, as the system takes them.
struct LineSettings {
  speed_t speed = B115200;
  /// Character size, parity and stop bits of `c_cflag`.
  tcflag_t frame = CS8;
};

/// "115200,N,8,1": baud, parity (N, E, O, M, S), data bits (5 to 8), stop bits (1, 2). No value for any other text, a
/// speed that is none of the usual ones among them.
[[nodiscard]] std::optional<LineSettings> ParseLineSettings(std::string_view text);

}  // namespace orvane
