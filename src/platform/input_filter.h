#pragma once

#include <string>
#include <string_view>

#include "platform/boxes.h"
#include "platform/controls.h"

namespace orvane {

inline constexpr std::string_view kNumberWithoutBlank = "Input the number without blank.";
inline constexpr std::string_view kItemInList = "Input the Item in the List.";

/// Which characters a box of numbers refuses.
struct InputRule {
  /// Let through beside the digits, out of the codes 32 to 126.
  std::string_view allowed;
  /// The 51 Hangul letters U+3131..U+3163 are refused too.
  bool hangul = true;
};

/// Whether the text holds a refused character. Characters outside the two ranges are never refused.
[[nodiscard]] bool HoldsRefused(std::string_view text, const InputRule& rule);

/// On change of a box of numbers: a refused character shows the box's words and puts the reset text in. The reset
/// text is the panel's own choice and not always the box's default.
void FilterInput(TextBox& box, const InputRule& rule, std::string_view resetText, Boxes& boxes,
                 std::string_view words = kNumberWithoutBlank);
void FilterInput(ComboBox& box, const InputRule& rule, std::string_view resetText, Boxes& boxes,
                 std::string_view words = kNumberWithoutBlank);

/// On change of a combo box: a text outside the given entries shows the words and puts the reset text in.
void FilterItem(ComboBox& box, const std::vector<std::string>& entries, std::string_view resetText, Boxes& boxes,
                std::string_view words = kItemInList);

}  // namespace orvane
