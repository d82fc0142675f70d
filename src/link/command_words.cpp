#include "link/command_words.h"

#include <algorithm>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::string_view kSeparators = " ,\r\n\t";

bool IsWellFormed(std::string_view word) {
  return word.find_first_of("0123456789ABCDEFabcdef*#") != std::string_view::npos &&
         std::count(word.begin(), word.end(), 'x') <= 1 && std::count(word.begin(), word.end(), 'X') <= 1;
}

}  // namespace

void WordSplitter(std::string_view line, WordArray& words) {
  std::size_t count = 0;
  for (auto at = line.find_first_not_of(kSeparators); at != std::string_view::npos;) {
    const auto end = line.find_first_of(kSeparators, at);
    if (++count >= words.size()) throw StationFailure("Subscript out of range: a command has 100 words at most.");
    words[count] = line.substr(at, end - at);
    at = line.find_first_not_of(kSeparators, end);
  }
  words[0] = std::to_string(std::max<std::size_t>(count, 1));
}

int WordCount(const WordArray& words) { return ToInteger(words[0]); }

bool ArgumentsAreWellFormed(const WordArray& words) {
  const auto first = words.begin() + 2;
  return std::all_of(first, std::max(first, words.begin() + 1 + WordCount(words)), IsWellFormed);
}

std::string HexRewrite(std::string_view word) {
  if (word.find('x') == std::string_view::npos) return std::string(word);
  return "&H" + std::string(word.substr(CharacterOffset(word, 2)));
}

}  // namespace orvane
