#include "platform/input_filter.h"

#include <algorithm>

#include "base/text.h"

namespace orvane {
namespace {

template <class Box>
void Filter(Box& box, const InputRule& rule, std::string_view resetText, Boxes& boxes, std::string_view words) {
  if (!HoldsRefused(box.Text(), rule)) return;
  boxes.Warning(std::string(words));
  box.SetText(resetText);
}

}  // namespace

bool HoldsRefused(std::string_view text, const InputRule& rule) {
  const auto refused = [&](char32_t c) {
    if (c >= 0x3131 && c <= 0x3163) return rule.hangul;
    if (c < 32 || c > 126 || (c >= '0' && c <= '9')) return false;
    return rule.allowed.find(static_cast<char>(c)) == std::string_view::npos;
  };
  const auto characters = DecodeUtf8(text);
  return std::any_of(characters.begin(), characters.end(), refused);
}

void FilterInput(TextBox& box, const InputRule& rule, std::string_view resetText, Boxes& boxes,
                 std::string_view words) {
  Filter(box, rule, resetText, boxes, words);
}

void FilterInput(ComboBox& box, const InputRule& rule, std::string_view resetText, Boxes& boxes,
                 std::string_view words) {
  Filter(box, rule, resetText, boxes, words);
}

void FilterItem(ComboBox& box, const std::vector<std::string>& entries, std::string_view resetText, Boxes& boxes,
                std::string_view words) {
  if (std::find(entries.begin(), entries.end(), box.Text()) != entries.end()) return;
  boxes.Warning(std::string(words));
  box.SetText(resetText);
}

}  // namespace orvane
