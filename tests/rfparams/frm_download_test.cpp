#include "panels/frm_download.h"

#include <gtest/gtest.h>

#include "support/face_rows.h"

namespace orvane::test {
namespace {

using enum ControlKind;

TEST(FrmDownLoad, ShowsTheTransferAsItIsShipped) {
  FrmDownLoad panel;
  EXPECT_EQ(panel.Name(), "frmDownLoad");
  EXPECT_EQ(panel.Caption(), "DownLoad");
  EXPECT_EQ(panel.fraBBOption.Caption(), "BB Options");
  EXPECT_FALSE(panel.fraBBOption.Enabled()) << "\"Full \" is selected";
  ExpectFace(panel, {{"fraDownloadMode", Frame, "Download Mode"},
                     {"optFullDownload", Option, "Full "},
                     {"optPartialDownload", Option, "Partial"},
                     {"chkChargerParam", Check, "Charger Params"},
                     {"fraDownloadOption", Frame, "RF Parameter Download"},
                     {"optDownloadFileLoad", Option, "File load"},
                     {"optDownloadRAM", Option, "RAM"},
                     {"optDownloadFlash", Option, "Flash"},
                     {"cmdEepromDownLoad", Button, "Download"},
                     {"cmdUpLoad", Button, "Up Load"},
                     {"fraFlashTest", Frame, "Flash Test"},
                     {"cmdse", Button, "SE3"},
                     {"lstDataReadWindow", List, ""},
                     {"prgDownload", Progress, "", false}});
  EXPECT_TRUE(panel.optFullDownload.Selected());
  EXPECT_TRUE(panel.optDownloadFlash.Selected());
}

TEST(FrmDownLoad, ShowsTheEepromTestAsItIsShipped) {
  const FrmDownLoad panel;
  ExpectFace(panel, {{"fraEepromTest", Frame, "EEPROM Test"},
                     {"fraActionMode", Frame, "Read / Write"},
                     {"optEepromRead", Option, "Read"},
                     {"optEepromWrite", Option, "Write"},
                     {"fraBytePageMode", Frame, "Byte / Page"},
                     {"optEepromByte", Option, "Byte"},
                     {"optEepromPage", Option, "Page"},
                     {"fraStratAddresLength", Frame, "Start Address && Length"},
                     {"lblEepromAddress", Label, "Address"},
                     {"txtEepromStartAddress", Text, "0"},
                     {"updEepromStartAddress", UpDown, ""},
                     {"lblEepromLength", Label, "Length"},
                     {"txtEepromLength", Text, "1"},
                     {"updEepromLength", UpDown, ""},
                     {"fraEepromDataRead", Frame, "Data Read"},
                     {"fraEepromDataWrite", Frame, "Data Write"},
                     {"lblDisplayAddress", Label, "Add"},
                     {"txtEepromDataWriteAddress", Text, ""},
                     {"lblEepromData", Label, "Data"},
                     {"txtEepromDataWrite", Text, ""},
                     {"cmdEepromTest", Button, "Test"},
                     {"cmdEepromErase", Button, "All Erase"}});
  ExpectSpin(panel.updEepromStartAddress, &panel.txtEepromStartAddress, 0, 65536);
  ExpectSpin(panel.updEepromLength, &panel.txtEepromLength, 0, 65536);
}

TEST(FrmDownLoad, ItsDialogAsksForParameterFiles) {
  const FrmDownLoad panel;
  ExpectDialog(panel.dlgDownload, "RF Parameters Download/", "(*.epm)|*.epm|(*.txt)|*.txt|All Files(*.*)|*.*;",
               "epm");
}

}  // namespace
}  // namespace orvane::test
