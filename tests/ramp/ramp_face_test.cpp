#include <gtest/gtest.h>

#include "panels/frm_ramp_table.h"
#include "panels/orvane_main.h"
#include "support/face_rows.h"

namespace orvane::test {
namespace {

using enum ControlKind;

TEST(RampEditorFace, StandsOnBothPanelsUnderTheSameNames) {
  const OrvaneMain main;
  const FrmRampTable dialog;
  EXPECT_EQ(dialog.Name(), "frmRampTable");
  EXPECT_EQ(dialog.Caption(), "Ramp Table");
  for (const Panel* panel : std::initializer_list<const Panel*>{&main, &dialog}) {
    SCOPED_TRACE(panel->Name());
    ExpectFace(*panel, {{"fraRampStorageMode", Frame, "Load / Save Mode"},
                        {"optFile", Option, "File"},
                        {"optTarget", Option, "Target"},
                        {"fraRampTableIndex", Frame, "Ramp Index"},
                        {"txtRampTableIndex", Text, "0"},
                        {"updRampTableIndex", UpDown, ""},
                        {"lblRampIndex", Label, "GSM"},
                        {"cmdRampIndexset", Button, "Set"},
                        {"fraRampShapeTable(0)", Frame, "Ramp Shape Table"},
                        {"fraRampShapeTable(1)", Frame, "Ramp Shape Table"},
                        {"lblUP(0)", Label, "0"},
                        {"lblUP(15)", Label, "15"},
                        {"lblDN(0)", Label, "0"},
                        {"lblDN(15)", Label, "15"},
                        {"txtUP(0)", Text, ""},
                        {"txtUP(15)", Text, ""},
                        {"txtDN(0)", Text, ""},
                        {"txtDN(15)", Text, ""},
                        {"updUP(15)", UpDown, ""},
                        {"updDN(15)", UpDown, ""},
                        {"fraRampUpStatus", Frame, "Up Status"},
                        {"fraRampDownStatus", Frame, "Down Status"},
                        {"txtRampUpStatus", Text, ""},
                        {"txtRampDownStatus", Text, ""},
                        {"lblRampUpStatus", Label, "Up Table Sum"},
                        {"lblRampDownStatus", Label, "Down Table Sum"},
                        {"cmdRampLoad", Button, "Load"},
                        {"cmdRampSave", Button, "Save"}});
    EXPECT_EQ(panel->Find("txtUP(16)"), nullptr);
  }
  ExpectFace(main, {{"Command3", Button, "Set"}});
  ExpectFace(dialog, {{"cmdRampTableSet", Button, "Set"}, {"cmdRampTableClose", Button, "Close"}});
  EXPECT_TRUE(main.ramp.optFile.Selected());
  EXPECT_TRUE(dialog.editor.optFile.Selected());
}

TEST(RampEditorFace, ItsSpinsCoverTheTablesAndTheValues) {
  const FrmRampTable dialog;
  const RampEditorFace& face = dialog.editor;
  ExpectSpin(face.updRampTableIndex, &face.txtRampTableIndex, 0, 30);
  for (std::size_t i = 0; i < face.updUP.size(); ++i) {
    ExpectSpin(*face.updUP[i], face.txtUP[i].get(), 0, 31);
    ExpectSpin(*face.updDN[i], face.txtDN[i].get(), 0, 31);
  }
  ExpectDialog(face.dlgRampSave, "", "(*.dat)|*.dat|All Files (*.*)|*.*;", "DAT");
}

}  // namespace
}  // namespace orvane::test
