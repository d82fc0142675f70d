#include "panels/ramp_editor_face.h"

#include "platform/panel.h"

namespace orvane {

RampEditorFace::RampEditorFace(Panel& panel, std::string_view setButton)
    : fraRampStorageMode(panel, "fraRampStorageMode", "Load / Save Mode"),
      optFile(panel, "optFile", "File", storageMode, OptionButton::Start::Selected),
      optTarget(panel, "optTarget", "Target", storageMode),
      fraRampTableIndex(panel, "fraRampTableIndex", "Ramp Index"),
      txtRampTableIndex(panel, "txtRampTableIndex", "0"),
      updRampTableIndex(panel, "updRampTableIndex", &txtRampTableIndex, 0, 30, 0),
      lblRampIndex(panel, "lblRampIndex", "GSM"),
      cmdRampIndexset(panel, "cmdRampIndexset", "Set"),
      fraRampUpStatus(panel, "fraRampUpStatus", "Up Status"),
      lblRampUpStatus(panel, "lblRampUpStatus", "Up Table Sum"),
      txtRampUpStatus(panel, "txtRampUpStatus"),
      fraRampDownStatus(panel, "fraRampDownStatus", "Down Status"),
      lblRampDownStatus(panel, "lblRampDownStatus", "Down Table Sum"),
      txtRampDownStatus(panel, "txtRampDownStatus"),
      setToTarget(panel, std::string(setButton), "Set"),
      cmdRampLoad(panel, "cmdRampLoad", "Load"),
      cmdRampSave(panel, "cmdRampSave", "Save") {
  for (int i = 0; i < 2; ++i) {
    fraRampShapeTable[static_cast<std::size_t>(i)] =
        std::make_unique<Frame>(panel, ElementName("fraRampShapeTable", i), "Ramp Shape Table");
  }
  for (int i = 0; i < 16; ++i) {
    const auto at = static_cast<std::size_t>(i);
    lblUP[at] = std::make_unique<Label>(panel, ElementName("lblUP", i), std::to_string(i));
    txtUP[at] = std::make_unique<TextBox>(panel, ElementName("txtUP", i));
    updUP[at] = std::make_unique<UpDown>(panel, ElementName("updUP", i), txtUP[at].get(), 0, 31, 0);
    lblDN[at] = std::make_unique<Label>(panel, ElementName("lblDN", i), std::to_string(i));
    txtDN[at] = std::make_unique<TextBox>(panel, ElementName("txtDN", i));
    updDN[at] = std::make_unique<UpDown>(panel, ElementName("updDN", i), txtDN[at].get(), 0, 31, 0);
  }
}

}  // namespace orvane
