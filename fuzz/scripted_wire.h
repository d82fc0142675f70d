#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "platform/event_loop.h"

namespace orvane::fuzz {

/// The other end of every byte stream, and the clock of every deadline, for targets that talk to one. It stands in
/// for sockets and devices: its definitions of ByteStream and Deadline take the place of the station's own when it is
/// linked. Nothing waits; time is a number.
struct ScriptedWire {
  struct Piece {
    TimePoint at;
    std::string bytes;
    /// The other end closes the connection instead.
    bool end = false;
  };

  TimePoint now{0};
  /// Connections made so far.
  int connections = 0;
  /// What comes, in order; each piece not before its time.
  std::deque<Piece> coming;
  /// A new connection still hears what was on its way in the one before, as behind a serial device.
  bool keepsOld = false;
  /// The station has sent something.
  std::function<void(std::string_view bytes)> onSent;

  /// Says these bytes in pieces of that size, the first one that much from now.
  void Say(std::string_view bytes, TimePoint after = TimePoint{0}, std::size_t pieceSize = 0);
  void Close() { coming.push_back({now, "", true}); }
};

/// The one wire.
ScriptedWire& Wire();

}  // namespace orvane::fuzz
