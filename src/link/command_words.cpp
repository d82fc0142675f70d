#include "link/command_words.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

/// What a character means to a command line.
enum Kind : std::uint8_t { kOther, kSeparator, kMakesAnArgument, kSmallX, kCapitalX, kKinds };

constexpr std::array<Kind, 256> kKindOf = [] {
  std::array<Kind, 256> kinds{};
  const auto set = [&](std::string_view characters, Kind kind) {
    for (const char c : characters) kinds[static_cast<unsigned char>(c)] = kind;
  };
  set(" ,\r\n\t", kSeparator);
  set("0123456789ABCDEFabcdef*#", kMakesAnArgument);
  set("x", kSmallX);
  set("X", kCapitalX);
  return kinds;
}();

Kind KindOf(char c) { return kKindOf[static_cast<unsigned char>(c)]; }

bool IsWellFormed(std::string_view word) {
  std::array<int, kKinds> counts{};
  for (const char c : word) ++counts[KindOf(c)];
  return counts[kMakesAnArgument] > 0 && counts[kSmallX] <= 1 && counts[kCapitalX] <= 1;
}

}  // namespace

void WordArray::Add(std::size_t first, std::size_t size) {
  if (found_ == places_.size()) {
    throw StationFailure("Subscript out of range: a command has 100 words at most.");
  }
  places_[found_++] = {first, size};
}

WordArray WordSplitter(std::string_view line) {
  WordArray words(line);
  for (std::size_t at = 0;;) {
    while (at < line.size() && KindOf(line[at]) == kSeparator) ++at;
    if (at == line.size()) break;
    const std::size_t first = at;
    while (at < line.size() && KindOf(line[at]) != kSeparator) ++at;
    words.Add(first, at - first);
  }
  return words;
}

bool ArgumentsAreWellFormed(const WordArray& words) {
  for (std::size_t i = 2; i <= words.Count(); ++i) {
    if (!IsWellFormed(words[i])) return false;
  }
  return true;
}

// The "x" is nearly always the second character, which a loop reaches before a search has begun.
bool IsHexWord(std::string_view word) {
  return std::any_of(word.begin(), word.end(), [](char c) { return c == 'x'; });
}

std::string_view HexDigitsOf(std::string_view word) {
  const bool plain = word.size() > 2 && static_cast<unsigned char>(word[0] | word[1] | word[2]) < 0x80;
  return word.substr(plain ? 2 : CharacterOffset(word, 2));
}

}  // namespace orvane
