#include "ramp/ramp_boxes.h"

#include <algorithm>

#include "base/failure.h"
#include "base/numbers.h"

namespace orvane {
namespace {

constexpr int kLargestRampValue = 31;
constexpr int kGreenSumAtOpening = 128;

}  // namespace

bool IsRampValue(std::string_view text) { return IsPlainNumber(text, 0, kLargestRampValue); }

int CountRampValues(const ControlArray<TextBox>& boxes) {
  return static_cast<int>(
      std::count_if(boxes.begin(), boxes.end(), [](const auto& box) { return IsRampValue(box->Text()); }));
}

int SumOf(const ControlArray<TextBox>& boxes) {
  int sum = 0;
  for (const auto& box : boxes) sum += ToInteger(box->Text());
  return sum;
}

void ShowRampTable(const RampState& state, int index, RampEditorFace& face) {
  if (index < 0 || index >= kRampTables) {
    throw StationFailure("There is no ramp table " + std::to_string(index) + ".");
  }
  const auto& table = state.RampTable[static_cast<std::size_t>(index)];
  for (std::size_t k = 0; k < kRampUpValues; ++k) {
    face.txtUP[k]->SetText(table[k]);
    face.txtDN[k]->SetText(table[k + kRampUpValues]);
  }
}

void ShowRampSumsAsOpened(RampEditorFace& face) {
  const int down = SumOf(face.txtDN);
  const int up = SumOf(face.txtUP);
  const Colour colour = down == kGreenSumAtOpening || up == kGreenSumAtOpening ? kGreen : kRed;
  face.txtRampUpStatus.SetBackColor(colour);
  face.txtRampDownStatus.SetBackColor(colour);
  face.txtRampUpStatus.SetText(std::to_string(up));
  face.txtRampDownStatus.SetText(std::to_string(down));
}

}  // namespace orvane
