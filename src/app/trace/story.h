#pragma once

#include <iosfwd>
#include <string>

namespace orvane {

/// Tells a trace as a story, all its parts in order: who said what to whom in words, how long each reply took, waits
/// without a reply and failures marked by "!!". Damaged lines are named and passed over.
/// @throws TraceFault when there is no such file, NoTrace when nothing in it is of a trace; nothing is told then.
void TellStory(const std::string& path, std::ostream& out);

}  // namespace orvane
