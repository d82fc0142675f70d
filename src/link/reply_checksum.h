#pragma once

#include "link/deframer.h"
#include "state/reply_state.h"

namespace orvane {

/// Looks at the checksum of a padded reply. Decoding does not depend on it, and not every Target need form them
/// alike: so nothing is held against one until four of its replies in a row have borne the exclusive-or of all their
/// values. From then on it is known to form them so, and a reply without it came damaged.
/// @return how many replies are found damaged with this one; once it is known how this Target forms its checksums,
/// the earlier ones that lacked theirs are told with it.
[[nodiscard]] int JudgeChecksum(ChecksumWatch& watch, const Deframed& reply);

/// Whether the last value ahead of the terminator is the exclusive-or of the values ahead of it. `reply` has a frame.
[[nodiscard]] bool BearsItsChecksum(const Deframed& reply);

}  // namespace orvane
