#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/event_loop.h"

namespace orvane::test {

/// What left the station, in order, whichever link it took: "Target: rfe 2", "1: *IDN?" (address 1), "box: ...".
class Journal {
 public:
  void Add(std::string line) {
    lines_.push_back(std::move(line));
    times_.push_back(now ? now() : TimePoint{0});
  }
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  /// When each line was added, by `now`.
  [[nodiscard]] const std::vector<TimePoint>& Times() const { return times_; }
  /// The lines that begin with `prefix`, without it.
  [[nodiscard]] std::vector<std::string> Of(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const auto& line : lines_) {
      if (line.rfind(prefix, 0) == 0) found.push_back(line.substr(prefix.size()));
    }
    return found;
  }
  [[nodiscard]] std::vector<std::string> Commands() const { return Of("Target: "); }
  void Clear() {
    lines_.clear();
    times_.clear();
  }

  std::function<TimePoint()> now;

 private:
  std::vector<std::string> lines_;
  std::vector<TimePoint> times_;
};

}  // namespace orvane::test
