#pragma once

#include <string>
#include <vector>

namespace orvane {

/// The entries of a list of whole numbers, from the first to the last.
[[nodiscard]] inline std::vector<std::string> NumberItems(int first, int last, int step = 1) {
  std::vector<std::string> items;
  for (int number = first; number <= last; number += step) items.push_back(std::to_string(number));
  return items;
}

}  // namespace orvane
