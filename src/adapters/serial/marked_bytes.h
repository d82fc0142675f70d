#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// Takes the marks out of what a terminal in PARMRK mode reads: `FF FF` stands for the byte FF, `FF 00 X` for a byte
/// X that came damaged (parity or frame), `FF 00 00` for a break. A mark may be cut anywhere between two reads.
/// Source: termios(3).
class MarkedBytes {
 public:
  /// The bytes as they came on the line; damaged ones are among them as they stand, so that none is lost in silence.
  [[nodiscard]] std::string Take(std::string_view marked);

  /// Since the start.
  [[nodiscard]] int Damaged() const { return damaged_; }
  [[nodiscard]] int Breaks() const { return breaks_; }

 private:
  enum class State { Plain, Marked, Damaged };
  State state_ = State::Plain;
  int damaged_ = 0;
  int breaks_ = 0;
};

}  // namespace orvane
