#include "ramp/ramp_panels.h"

#include <algorithm>

#include "base/text.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

// A double-byte character counts as a negative code and so as one below the digits.
bool IsRefusedInDelay(char32_t c) { return c < '0' || (c > '9' && c <= 126) || c >= 128; }

void CheckDelay(ComboBox& box, Boxes& boxes) {
  const auto characters = DecodeUtf8(box.Text());
  if (std::none_of(characters.begin(), characters.end(), IsRefusedInDelay)) return;
  boxes.Warning(std::string(kNumberWithoutBlank));
  box.SetText("0");
}

}  // namespace

void RampTableDialog::Connect() {
  FrmRampTable& dialog = dialog_.Untouched();
  dialog.onLoad = [this] {
    state_.RampStorageMode = "File";
    editor_.Open();
  };
  dialog.cmdRampTableClose.onClick = [this] { dialog_->Hide(); };
}

void RampDelayBoxes::Connect() {
  OrvaneMain& main = main_.Untouched();
  for (ComboBox* box : {&main.cboDELU, &main.cboDELD}) {
    box->onChange = [this, box] { CheckDelay(*box, boxes_); };
  }
}

}  // namespace orvane
