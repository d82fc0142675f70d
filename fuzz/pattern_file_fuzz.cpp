// A pattern file. Each value must be the word that stands in its line and column; lines that are not there keep
// theirs.

#include "require.h"
#include "rxcal/pattern_table.h"

namespace {

using namespace orvane;

const std::string kKept = "kept";

/// Cut byte by byte. A line ends with a line feed, ahead of which one carriage return may stand; a word is what
/// stands between blanks and tabs.
std::array<std::array<std::string, kTablePositions>, kPatterns> PlainPatterns(std::string_view content) {
  std::array<std::array<std::string, kTablePositions>, kPatterns> table;
  for (auto& pattern : table) pattern.fill(kKept);
  std::size_t row = 0;
  for (std::size_t begin = 0; begin < content.size() && row < kTablePositions; ++row) {
    std::size_t end = begin;
    while (end < content.size() && content[end] != '\n') ++end;
    std::string_view line = content.substr(begin, end - begin);
    if (line.ends_with('\r')) line.remove_suffix(1);
    begin = end + 1;

    std::array<std::string, kPatterns> words;
    std::size_t word = 0;
    for (std::size_t i = 0; i < line.size() && word < kPatterns; ++i) {
      const bool isBlank = line[i] == ' ' || line[i] == '\t';
      if (!isBlank) words[word] += line[i];
      if (isBlank && !words[word].empty()) ++word;
    }
    for (std::size_t pattern = 0; pattern < kPatterns; ++pattern) table[pattern][row] = words[pattern];
  }
  return table;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string content(data, data + size);
  static PatternState state;
  for (auto& pattern : state.APCDACPatternTable) pattern.fill(kKept);
  TakePatterns(content, state);
  fuzz::Require(state.APCDACPatternTable == PlainPatterns(content), "another pattern");
  return 0;
}
