#include "rfparams/rf_text_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

#include "base/failure.h"
#include "base/subscript.h"
#include "base/text.h"
#include "platform/files.h"
#include "rfparams/record_layout.h"
#include "rfparams/rf_type.h"

namespace orvane {
namespace {

constexpr Integer kReservedWord = 32;

/// The positions in the order in which a file is converted: that of the file, but for the three il2agc columns, which
/// are taken row by row. It shows when a bad text stops the conversion between them.
constexpr std::array<std::uint16_t, kParameterCount> kConversionOrder = [] {
  constexpr std::uint16_t kFirst = 5;
  constexpr std::uint16_t kRows = 121;
  std::array<std::uint16_t, kParameterCount> order{};
  for (std::uint16_t p = 0; p < kParameterCount; ++p) order[p] = p;
  for (std::uint16_t i = 0; i < kRows; ++i) {
    for (std::uint16_t column = 0; column < 3; ++column) {
      order[kFirst + 3U * i + column] = static_cast<std::uint16_t>(kFirst + column * kRows + i);
    }
  }
  return order;
}();

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// The word behind the first word "=" of a line; no value without one. Blanks and tabs stand between words. A line
/// may have no word behind it: an empty value.
std::optional<std::string_view> ValueOf(std::string_view line) {
  for (auto at = line.find('='); at != std::string_view::npos; at = line.find('=', at + 1)) {
    const auto* const rest = line.begin() + at + 1;
    if ((at > 0 && !IsBlank(line[at - 1])) || (rest != line.end() && !IsBlank(*rest))) continue;
    const auto* const first = std::find_if_not(rest, line.end(), IsBlank);
    return std::string_view(first, std::find_if(first, line.end(), IsBlank));
  }
  return std::nullopt;
}

}  // namespace

int ReadParameterLines(std::string_view content, RFState& state) {
  std::size_t position = 0;
  while (!content.empty()) {
    const std::string_view line = TakeLine(content);
    if (line.empty() || line.find('/') != std::string_view::npos) continue;
    const auto value = ValueOf(line);
    if (value && position < kRFTextPositions) state.RFParamText[position] = TextOfBytes(*value);
    ++position;
  }
  state.RFParamCount = static_cast<int>(position);
  return state.RFParamCount;
}

std::string DamageOfParameterLines(const RFState& state) {
  if (state.RFParamCount == static_cast<int>(kParameterCount)) return "";
  return "holds " + std::to_string(state.RFParamCount) + " values, not " + std::to_string(kParameterCount);
}

void FileToRFParamsConvert(RFState& state) {
  state.recordIsWhole = false;
  const auto slots = ParameterSlots();
  state.RFParams.rf_revision = RFTypeCode(state.RFParamText[0]);
  state.RFParams.rf_reserved_word = kReservedWord;
  for (std::size_t step = 1; step < kParameterCount; ++step) {
    const std::size_t position = kConversionOrder[step];
    const std::string& text = state.RFParamText[position];
    VisitValue(slots[position], state.RFParams, [&](auto& value) {
      if constexpr (std::is_same_v<decltype(value), Long&>) {
        value = ToLong(text);
      } else {
        value = ToInteger(text);
      }
    });
  }
  state.recordIsWhole = state.RFParamCount >= static_cast<int>(kParameterCount);
}

void RFParamsToDataConvert(RFState& state) {
  const auto slots = ParameterSlots();
  if (const auto name = RFTypeName(state.RFParams.rf_revision)) state.RFParamText[0] = *name;
  for (std::size_t position = 1; position < kParameterCount; ++position) {
    VisitValue(slots[position], state.RFParams,
               [&](auto& value) { state.RFParamText[position] = std::to_string(value); });
  }
}

std::string ParameterFileText(const RFState& state) {
  constexpr std::size_t kTypicalLine = 40;
  std::string text;
  text.reserve(kParameterCount * kTypicalLine);
  std::size_t position = 0;
  for (const ParameterSlot& slot : ParameterSlots()) {
    AppendLabel(text, slot);
    text.append("\t=\t").append(BytesOfText(state.RFParamText[position++])).append(kLineEnd);
  }
  return text;
}

std::string ParameterLabel(int position) {
  const auto slots = ParameterSlots();
  std::string label;
  AppendLabel(label, At(slots, position));
  return label;
}

}  // namespace orvane
