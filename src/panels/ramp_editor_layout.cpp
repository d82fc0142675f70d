#include "panels/ramp_editor_layout.h"

#include "panels/ramp_editor_face.h"

namespace orvane {

using namespace lay;

namespace {

constexpr int kBoxesInRow = 8;
constexpr int kBoxCharacters = 3;

/// One direction of the ramp: its sixteen boxes, each behind its number.
Layout Shape(Frame& frame, const char* direction, ControlArray<Label>& numbers, ControlArray<TextBox>& boxes,
             ControlArray<UpDown>& spins) {
  Parts fields;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    fields.push_back(Field(*numbers[i], {Spin(*boxes[i], *spins[i]).Wide(kBoxCharacters)}).Wide(2));
  }
  return Group(frame, {Row({Text(direction).Wide(5), Grid(kBoxesInRow, std::move(fields)).Stretched()})});
}

Layout Status(Frame& frame, Label& caption, TextBox& sum) {
  return Group(frame, {Field(caption, {Of(sum).Wide(4)})});
}

}  // namespace

Layout LayOut(RampEditorFace& editor, Layout beside) {
  return Column({
      Row({
          Group(editor.fraRampTableIndex, {Row({Spin(editor.txtRampTableIndex, editor.updRampTableIndex).Wide(3),
                                                Of(editor.lblRampIndex), Of(editor.cmdRampIndexset), Space()})})
              .Stretched(),
          Group(editor.fraRampStorageMode, {Row({Of(editor.optFile), Of(editor.optTarget), Of(editor.cmdRampLoad),
                                                 Of(editor.cmdRampSave), Space()})}),
          Group("Ramp to Target", {Of(editor.setToTarget)}),
      }),
      Shape(*editor.fraRampShapeTable[0], "Up", editor.lblUP, editor.txtUP, editor.updUP),
      Shape(*editor.fraRampShapeTable[1], "Down", editor.lblDN, editor.txtDN, editor.updDN),
      Row({
          Status(editor.fraRampUpStatus, editor.lblRampUpStatus, editor.txtRampUpStatus),
          Status(editor.fraRampDownStatus, editor.lblRampDownStatus, editor.txtRampDownStatus),
          std::move(beside),
      }),
      View("rampShape").Stretched(),
  });
}

}  // namespace orvane
