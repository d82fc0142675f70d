#pragma once

#include "link/deframer.h"

namespace orvane {

/// A watch on the checksums of padded replies. Decoding does not depend on them, and not every Target need form them
/// alike: so nothing is held against one until four of its replies in a row have borne the exclusive-or of all their
/// values. From then on it is known to form them so, and a reply without it came damaged.
/// One watch is for one Target: what it has not told yet is nothing to the next one.
class ReplyChecksums {
 public:
  /// @return how many replies are found damaged with this one; once it is known how this Target forms its checksums,
  /// the earlier ones that lacked theirs are told with it.
  [[nodiscard]] int Judge(const Deframed& reply);

 private:
  static constexpr int kProof = 4;
  int fitsInARow_ = 0;
  int unproven_ = 0;
};

/// Whether the last value ahead of the terminator is the exclusive-or of the values ahead of it. `reply` has a frame.
[[nodiscard]] bool BearsItsChecksum(const Deframed& reply);

}  // namespace orvane
