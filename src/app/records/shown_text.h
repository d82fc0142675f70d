#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

/// A text of a record as a terminal may have it: line ends become " / "; what a terminal would obey and bytes that
/// are no UTF-8 are spelt ("\x1b", "\u202e").
[[nodiscard]] std::string Harmless(std::string_view text);

/// Columns that a harmless text takes: two for Hangul and its like, none for marks that sit on a character.
[[nodiscard]] std::size_t ColumnsOf(std::string_view text);

/// The text if it fits, or as much of it as fits with an ellipsis behind.
[[nodiscard]] std::string CutTo(std::string_view text, std::size_t columns);

/// With as many decimals as it needs: "28.9596", "129". All digits that tell it from its neighbours; empty for what
/// is no number.
[[nodiscard]] std::string PlainNumber(double value);
/// The same for eyes: four decimals at the most.
[[nodiscard]] std::string ShortNumber(double value);
/// "2.23 s".
[[nodiscard]] std::string SecondsText(double seconds);

}  // namespace orvane
