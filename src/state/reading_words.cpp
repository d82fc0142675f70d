#include "state/reading_words.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"

namespace orvane {
namespace {

struct WordRow {
  std::string_view part;
  std::string_view words;
};
/// Parts of names that an operator knows by other words.
constexpr std::array kWords{WordRow{"gsm", "GSM"},
                            WordRow{"dcs", "DCS"},
                            WordRow{"gmagic", "G-MAGIC"},
                            WordRow{"dac", "DAC value"},
                            WordRow{"phase", "phase error"},
                            WordRow{"rms", "RMS"},
                            WordRow{"frequency_error", "frequency error"},
                            WordRow{"shutdown", "shut-down count"},
                            WordRow{"full", "full count"}};

std::string_view WordsOf(std::string_view part) {
  const auto* const row =
      std::find_if(kWords.begin(), kWords.end(), [&](const WordRow& r) { return r.part == part; });
  return row == kWords.end() ? part : row->words;
}

bool IsNumber(std::string_view part) { return part.find_first_not_of("0123456789") == std::string_view::npos; }

}  // namespace

std::string NameInWords(std::string_view name) {
  std::string words;
  std::string_view before;
  while (!name.empty()) {
    const std::string_view part = name.substr(0, name.find('.'));
    name.remove_prefix(std::min(part.size() + 1, name.size()));
    const bool isDirection = before.empty() && (part == "rx" || part == "tx");
    const bool isChannel = before == "rx" && IsNumber(part);
    if (isChannel) words += "channel ";
    if (!isDirection)
      words.append(IsNumber(before) && !before.empty() ? ", " : words.empty() || isChannel ? "" : " ");
    if (!isDirection) words += WordsOf(part);
    before = part;
  }
  return words;
}

std::string LimitsText(const Reading& reading) {
  std::string text = NameInWords(reading.name) + ": " + NumberText(reading.value) + " " + std::string(reading.unit);
  if (reading.low && reading.high) {
    text += ", limits " + NumberText(*reading.low) + " to " + NumberText(*reading.high);
  } else if (reading.high) {
    text += ", at most " + NumberText(*reading.high);
  } else if (reading.low) {
    text += ", at least " + NumberText(*reading.low);
  }
  return text;
}

}  // namespace orvane
