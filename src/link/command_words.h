#pragma once

#include <array>
#include <string>
#include <string_view>

namespace orvane {

/// A command line in words, at 1 upward; element 0 holds their number as decimal text. Words that are not there are
/// empty.
using WordArray = std::array<std::string, 101>;

/// Splits at blanks, commas, tabs and line ends. A line without a word gives one empty word.
/// @throws StationFailure for a 101st word.
void WordSplitter(std::string_view line, WordArray& words);

/// The number in element 0.
[[nodiscard]] int WordCount(const WordArray& words);

/// Whether every word behind the command word could be an argument: at least one character of 0-9, A-F, a-f, "*" and
/// "#", at most one "x" and at most one "X". Nothing else is refused here.
[[nodiscard]] bool ArgumentsAreWellFormed(const WordArray& words);

/// A word with an "x" in it, such as "0x1F", as "&H" and its text from the third character on; others as they are.
[[nodiscard]] std::string HexRewrite(std::string_view word);

}  // namespace orvane
