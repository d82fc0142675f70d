#include "adapters/serial/marked_bytes.h"

namespace orvane {

std::string MarkedBytes::Take(std::string_view marked) {
  constexpr char kMark = '\xFF';
  std::string bytes;
  bytes.reserve(marked.size());
  for (const char byte : marked) {
    switch (state_) {
      case State::Plain:
        if (byte == kMark) {
          state_ = State::Marked;
        } else {
          bytes += byte;
        }
        break;
      case State::Marked:
        state_ = byte == '\0' ? State::Damaged : State::Plain;
        if (byte == '\0') break;
        // A terminal that marks nothing lets a bare FF through.
        if (byte != kMark) bytes += kMark;
        bytes += byte;
        break;
      case State::Damaged:
        state_ = State::Plain;
        ++(byte == '\0' ? breaks_ : damaged_);
        bytes += byte;
        break;
    }
  }
  return bytes;
}

}  // namespace orvane
