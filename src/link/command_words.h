#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace orvane {

/// A command line in words, at 1 upward; they are parts of the line, which must outlive them. Words that are not
/// there are empty.
class WordArray {
 public:
  explicit WordArray(std::string_view line) : line_(line) {}

  [[nodiscard]] std::string_view operator[](std::size_t i) const {
    return i >= 1 && i <= found_ ? line_.substr(places_[i - 1].first, places_[i - 1].size) : std::string_view();
  }
  /// A line without a word counts as one of one empty word.
  [[nodiscard]] std::size_t Count() const { return found_ == 0 ? 1 : found_; }
  /// @throws StationFailure for a 101st word.
  void Add(std::size_t first, std::size_t size);

 private:
  struct Place {
    std::size_t first;
    std::size_t size;
  };
  std::string_view line_;
  std::size_t found_ = 0;
  /// Set up to `found_`.
  std::array<Place, 100> places_;
};

/// Splits at blanks, commas, tabs and line ends.
/// @throws StationFailure for a 101st word.
[[nodiscard]] WordArray WordSplitter(std::string_view line);

/// Whether every word behind the command word could be an argument: at least one character of 0-9, A-F, a-f, "*" and
/// "#", at most one "x" and at most one "X". Nothing else is refused here.
[[nodiscard]] bool ArgumentsAreWellFormed(const WordArray& words);

/// A word with an "x" in it, such as "0x1F", is hexadecimal; its digits are its text from the third character on,
/// wherever the "x" stands.
[[nodiscard]] bool IsHexWord(std::string_view word);
[[nodiscard]] std::string_view HexDigitsOf(std::string_view word);

}  // namespace orvane
