#pragma once

#include <string>
#include <vector>

namespace orvane::test {

/// What left the station, in order, whichever link it took: "Target: rfe 2", "1: *IDN?" (address 1), "box: ...".
class Journal {
 public:
  void Add(std::string line) { lines_.push_back(std::move(line)); }
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  /// The lines that begin with `prefix`, without it.
  [[nodiscard]] std::vector<std::string> Of(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const auto& line : lines_) {
      if (line.rfind(prefix, 0) == 0) found.push_back(line.substr(prefix.size()));
    }
    return found;
  }
  [[nodiscard]] std::vector<std::string> Commands() const { return Of("Target: "); }
  void Clear() { lines_.clear(); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace orvane::test
