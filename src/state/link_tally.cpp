#include "state/link_tally.h"

namespace orvane {

std::string DoubtsBetween(const LinkTally& before, const LinkTally& after) {
  std::string doubts;
  const auto tell = [&](long LinkTally::*count, const char* what) {
    const long times = after.*count - before.*count;
    if (times == 0) return;
    doubts += (doubts.empty() ? "" : ", ") + std::to_string(times) + " " + what;
  };
  tell(&LinkTally::silentWaits, "without a reply");
  tell(&LinkTally::refusedLines, "never sent");
  tell(&LinkTally::strayReplies, "with stray bytes around the reply");
  tell(&LinkTally::foreignReplies, "with a reply to another command");
  tell(&LinkTally::damagedReplies, "with a damaged reply");
  tell(&LinkTally::lineErrors, "with an error of the line");
  tell(&LinkTally::unaskedTexts, "with text that nobody asked for");
  return doubts.empty() ? doubts : "Exchanges with the Target: " + doubts;
}

}  // namespace orvane
