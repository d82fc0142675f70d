#pragma once

#include <string>

#include "link/link_rig.h"

namespace orvane::test {

/// Gives the station a command line. @return what is wrong with what it put on the wire, read back by a reader that
/// shares nothing with the sender; empty when all is well.
[[nodiscard]] std::string FaultOfLine(LinkRig& rig, const std::string& line);

/// Lets the Target answer "ti" with these bytes, in pieces of the given size. @return what is wrong with the station
/// afterwards; empty when all is well.
[[nodiscard]] std::string FaultOfReply(LinkRig& rig, const std::string& bytes, std::size_t pieceSize);

}  // namespace orvane::test
