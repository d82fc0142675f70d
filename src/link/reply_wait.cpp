#include "link/reply_wait.h"

namespace orvane {
namespace {

constexpr std::chrono::seconds kMinute{60};

}  // namespace

int SecondsField(TimePoint elapsed) {
  return static_cast<int>(std::chrono::round<std::chrono::seconds>(elapsed) % kMinute / std::chrono::seconds(1));
}

TimePoint EndOfWait(TimePoint elapsed) {
  const auto minutes = std::chrono::round<std::chrono::seconds>(elapsed) / kMinute;
  // Two and a half seconds still round to two.
  return minutes * kMinute + std::chrono::milliseconds(2500) + TimePoint{1};
}

}  // namespace orvane
