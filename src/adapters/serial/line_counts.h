#pragma once

#include <vector>

namespace orvane {

/// How often each thing has happened on a line beside bytes. Only differences mean something.
struct LineCounts {
  int cts = 0;
  int dsr = 0;
  int carrier = 0;
  int ring = 0;
  int breaks = 0;
  int frame = 0;
  int overrun = 0;
  int bufferOverrun = 0;
  int parity = 0;
};

/// The control's event codes for what has happened between two looks, one for each kind, changes of the line ahead of
/// errors.
[[nodiscard]] std::vector<int> EventsBetween(const LineCounts& before, const LineCounts& after);

/// Modem lines as TIOCMGET gives them, for a device that does not count: each that differs is a change. A ring is
/// counted as it ends.
void CountChanges(int before, int after, LineCounts& counts);

}  // namespace orvane
