#include "rfparams/parameter_file_check.h"

#include <algorithm>
#include <vector>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "rfparams/eeprom_image.h"
#include "rfparams/record_layout.h"
#include "rfparams/rf_text_file.h"

namespace orvane::test {
namespace {

const std::string kUntouched = "untouched";

/// The value of a data line as the format says, read byte by byte: the word behind the first "=" that is a word.
std::string ValueOf(std::string_view line) {
  std::string word;
  bool found = false;
  for (const char c : line) {
    const bool blank = c == ' ' || c == '\t';
    if (!blank) word += c;
    if (!blank || word.empty()) continue;
    if (found) return TextOfBytes(word);
    found = word == "=";
    word.clear();
  }
  if (found) return TextOfBytes(word);
  return word == "=" ? "" : kUntouched;
}

/// The texts by position, read with another kind of splitting than the station's.
std::vector<std::string> TextsOf(std::string_view content) {
  std::vector<std::string> texts;
  for (std::size_t begin = 0, end = 0; begin < content.size(); begin = end + 1) {
    end = std::min(content.find('\n', begin), content.size());
    std::string_view line = content.substr(begin, end - begin);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty() || std::count(line.begin(), line.end(), '/') > 0) continue;
    texts.push_back(ValueOf(line));
  }
  return texts;
}

}  // namespace

std::string FaultOfParameterLines(std::string_view content) {
  // A record has thousands of texts: what a file leaves in this one is taken out again.
  static RFState rf = [] {
    RFState fresh;
    fresh.RFParamText.assign(kRFTextPositions, kUntouched);
    return fresh;
  }();
  const std::vector<std::string> texts = TextsOf(content);
  ReadParameterLines(content, rf);
  if (rf.RFParamCount != static_cast<int>(texts.size())) return "The count is not " + std::to_string(texts.size());
  constexpr std::size_t kBehind = 8;
  for (std::size_t p = 0; p < std::min(texts.size() + kBehind, rf.RFParamText.size()); ++p) {
    const std::string& expected = p < texts.size() ? texts[p] : kUntouched;
    if (rf.RFParamText[p] != expected) return "Position " + std::to_string(p) + " is not \"" + expected + "\"";
    rf.RFParamText[p] = kUntouched;
  }
  return "";
}

std::string FaultOfParameterFile(std::string_view content) {
  RFState rf;
  ReadParameterLines(content, rf);
  const bool whole = PassOver([&] { FileToRFParamsConvert(rf); });
  TMEEPROMDataMaker(rf);
  if (!whole) return "";
  const std::vector<std::string> given = rf.RFParamText;
  RFParamsToDataConvert(rf);
  for (std::size_t p = 1; p < kParameterCount; ++p) {
    if (rf.RFParamText[p] != std::to_string(ToLong(given[p])))
      return "Position " + std::to_string(p) + " is another number";
  }
  RFState again;
  const std::string text = ParameterFileText(rf);
  ReadParameterLines(text, again);
  if (!PassOver([&] { FileToRFParamsConvert(again); })) return "Its own file does not convert.";
  TMEEPROMDataMaker(again);
  if (again.EepromImage != rf.EepromImage) return "Its own file gives another image.";
  RFParamsToDataConvert(again);
  return ParameterFileText(again) == text ? "" : "Its own file gives another file.";
}

}  // namespace orvane::test
