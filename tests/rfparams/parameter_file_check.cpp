#include "rfparams/parameter_file_check.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "rfparams/eeprom_image.h"
#include "rfparams/rf_text_file.h"

namespace orvane::test {
namespace {

const std::string kUntouched = "untouched";

/// The texts by position as the format says, read with another kind of splitting than the station's.
std::vector<std::string> TextsOf(std::string_view content) {
  std::vector<std::string> texts;
  std::istringstream lines{std::string(content)};
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || std::count(line.begin(), line.end(), '/') > 0) continue;
    std::vector<std::string> words(1);
    for (const char c : line) {
      if (c != ' ' && c != '\t') {
        words.back() += c;
      } else if (!words.back().empty()) {
        words.emplace_back();
      }
    }
    words.emplace_back();
    const auto equals = std::find(words.begin(), words.end(), "=");
    texts.push_back(equals == words.end() ? kUntouched : TextOfBytes(*(equals + 1)));
  }
  return texts;
}

std::string FaultOfTexts(const RFState& rf, const std::vector<std::string>& texts) {
  if (rf.RFParamCount != static_cast<int>(texts.size())) return "The count is not " + std::to_string(texts.size());
  for (std::size_t p = 0; p < rf.RFParamText.size(); ++p) {
    const std::string& expected = p < texts.size() ? texts[p] : kUntouched;
    if (rf.RFParamText[p] != expected) return "Position " + std::to_string(p) + " is not \"" + expected + "\"";
  }
  return "";
}

}  // namespace

std::string FaultOfParameterFile(std::string_view content) {
  RFState rf;
  rf.RFParamText.assign(kRFTextPositions, kUntouched);
  ReadParameterLines(content, rf);
  const std::string fault = FaultOfTexts(rf, TextsOf(content));
  if (!fault.empty()) return fault;
  const bool whole = PassOver([&] { FileToRFParamsConvert(rf); });
  TMEEPROMDataMaker(rf);
  if (!whole) return "";
  RFParamsToDataConvert(rf);
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
