#pragma once

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>

namespace orvane {

/// The value of a JSON text, discarded when it is none. What nests deeper than `deepest` is left out: copies go down
/// into a value, and the stack has an end.
[[nodiscard]] inline nlohmann::ordered_json ShallowJson(std::string_view text, int deepest) {
  // Being asked about every value takes as long again as reading it, and most texts have nothing so deep.
  const auto opened = std::count_if(text.begin(), text.end(), [](char c) { return c == '{' || c == '['; });
  if (opened <= deepest) return nlohmann::ordered_json::parse(text, nullptr, false);
  const auto isNeeded = [deepest](int depth, auto, const auto&) { return depth <= deepest; };
  return nlohmann::ordered_json::parse(text, isNeeded, false);
}

}  // namespace orvane
