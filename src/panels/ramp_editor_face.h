#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "platform/controls.h"
#include "platform/file_dialogs.h"

namespace orvane {

/// One of a row of like controls.
template <class Item>
using ControlArray = std::array<std::unique_ptr<Item>, 16>;

/// The controls of the ramp editor, which stand on the main panel and on `frmRampTable` under the same names.
struct RampEditorFace {
  /// `setButton` is the name of the button that sends the boxes to the Target: the one name that differs.
  RampEditorFace(Panel& panel, std::string_view setButton);

  OptionGroup storageMode;
  Frame fraRampStorageMode;
  OptionButton optFile;
  OptionButton optTarget;
  Frame fraRampTableIndex;
  TextBox txtRampTableIndex;
  UpDown updRampTableIndex;
  Label lblRampIndex;
  Button cmdRampIndexset;
  std::array<std::unique_ptr<Frame>, 2> fraRampShapeTable;
  ControlArray<Label> lblUP;
  ControlArray<TextBox> txtUP;
  ControlArray<UpDown> updUP;
  ControlArray<Label> lblDN;
  ControlArray<TextBox> txtDN;
  ControlArray<UpDown> updDN;
  Frame fraRampUpStatus;
  Label lblRampUpStatus;
  TextBox txtRampUpStatus;
  Frame fraRampDownStatus;
  Label lblRampDownStatus;
  TextBox txtRampDownStatus;
  Button setToTarget;
  Button cmdRampLoad;
  Button cmdRampSave;
  FileDialog dlgRampSave{"", "(*.dat)|*.dat|All Files (*.*)|*.*;", "DAT", "", ""};
};

}  // namespace orvane
