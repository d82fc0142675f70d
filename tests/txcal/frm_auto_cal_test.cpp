#include "panels/frm_auto_cal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/face_rows.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;

using enum ControlKind;

TEST(FrmAutoCal, ShowsTheSettingsOfARunAsTheyAreShipped) {
  const FrmAutoCal panel;
  EXPECT_EQ(panel.Name(), "frmAutoCal");
  EXPECT_EQ(panel.Caption(), "Auto Calibration");
  ExpectFace(panel, {{"txtARFCN", Text, "62"},
                     {"txtdcsarfcn", Text, "699"},
                     {"txtLoss", Text, "-0.5"},
                     {"txtDCSLoss", Text, "-0.5"},
                     {"txtRxCableLossGSM", Text, "-0.5"},
                     {"txtRxCableLossDCS", Text, "-0.5"},
                     {"txtErrorRate", Text, "0.1"},
                     {"txtPeakPower", Text, ""},
                     {"txtTXP", Text, ""},
                     {"txtAutoCalAFC", Text, "-1180"},
                     {"txtfreqOffset", Text, "67"},
                     {"txtAutocalSetPointIL", Text, "-34"},
                     {"txtPowerIndex", Text, "5"},
                     {"txtPowerIndexLevel", Text, "32"},
                     {"txtinitialLevel", Text, "5"},
                     {"txtAutoCalPM", Text, ""},
                     {"txtAutoCalDCSPM", Text, ""},
                     {"txtGMAGICGSM900F71", Text, ""},
                     {"txtGMAGICDCS1800F71", Text, ""},
                     {"txtAutoCalGMAGICARFCN", Text, "700"},
                     {"txtAutoCalAGCARFCN", Text, "40"},
                     {"optNoChanCal", Option, "No CHN CAL"},
                     {"optChanCal", Option, "Execute CHN CAL"},
                     {"optSaveModeEEPROM", Option, "Flash"},
                     {"optSaveModeFile", Option, "File(*.epm)"},
                     {"optSaveModeEEPROMFile", Option, "Flash+ File"},
                     {"chkAutoSaveMode", Check, "Auto"},
                     {"ComboFunction", Combo, "CW"},
                     {"comboOffset", Combo, "Average"},
                     {"prgAutoCalDownload", Progress, ""}});
  EXPECT_TRUE(panel.optNoChanCal.Selected());
  EXPECT_FALSE(panel.optChanCal.Selected());
  EXPECT_THAT(panel.ComboFunction.Items(), ElementsAre("CW", "BCHTCH"));
  EXPECT_THAT(panel.comboOffset.Items(), ElementsAre("Average", "+offset", "-offset"));
}

TEST(FrmAutoCal, ShowsItsButtonsAsTheyAreShipped) {
  const FrmAutoCal panel;
  ExpectFace(panel, {{"cmdGSM", Button, "GSM"},
                     {"cmdDCS", Button, "DCS"},
                     {"cmdTxAllCal", Button, "Tx Auto Cal"},
                     {"cmdAllCalStart", Button, "All Cal"},
                     {"Command1", Button, "RF Cal"},
                     {"cmdAutoCalStop", Button, "Stop"},
                     {"cmdAutoCalClose", Button, "Close"},
                     {"cmdTxResults", Button, "Tx Results"},
                     {"cmdRxAutoCalResults", Button, "Rx Results"},
                     {"cmdMP", Button, "MP Show"},
                     {"cmdRampShape", Button, "Ramp Table"},
                     {"cmdAutoCalSet", Button, "Set"},
                     {"cmdAutoCalResultSave", Button, "Save"},
                     {"cmdPowerIndexSet", Button, "Set"},
                     {"cmdPowerIndexSave", Button, "Save"},
                     {"cmdPowerIndexLoad", Button, "Load"},
                     {"cmdinitialSet", Button, "Set"},
                     {"cmdinitialSave", Button, "Save"},
                     {"cmdinitialLoad", Button, "Load"},
                     {"cmdRxLossSet", Button, "Set"},
                     {"cmdRxLossSave", Button, "Save"},
                     {"cmdRxLossLoad", Button, "Load"}});
  for (const char* idle : {"cmdAutoCalAGCStart", "cmdAutoCalGMAGICStart", "cmdCompensationChannel",
                           "cmdCompensationTemperature", "cmdChannel", "cmdTempCal", "cmdRxAllAutoCal"}) {
    EXPECT_NE(panel.Find(idle), nullptr) << idle;
  }
}

TEST(FrmAutoCal, HasThreeGroupsOfSideTables) {
  const FrmAutoCal panel;
  ExpectFace(panel, {{"fraPowerIndex", Frame, "Power Index"},
                     {"optPowerIndexGSM", Option, "GSM"},
                     {"optPowerIndexDCS", Option, "DCS"},
                     {"fraInitialValue", Frame, "Initial Value"},
                     {"optinitialGSM", Option, "GSM"},
                     {"optinitialDCS", Option, "DCS"},
                     {"fraCableLoss", Frame, "Cable Loss"}});
  // Each use says its title; the panel's load selects the options.
  ExpectDialog(panel.dlgInitial, "", "(*.init)|*.init|All Files (*.*)|*.*;", "");
  ExpectDialog(panel.dlgPowerIndex, "", "(*.pwr)|*.pwr|All Files (*.*)|*.*;", "");
  ExpectDialog(panel.dlgLoss, "", "(*.loss)|*.loss|All Files (*.*)|*.*;", "");
}

TEST(FrmAutoCal, ItsSpinsHaveTheirRanges) {
  const FrmAutoCal panel;
  for (const char* name : {"UpDownARFCN", "UpDowndcs", "updLoss", "updDCSLoss", "updRxCableLossGSM",
                           "updRxCableLossDCS", "updAutoCalAFC", "updAutocalSetPointIL", "updPowerIndex",
                           "updPowerIndexLevel", "updinitialLevel", "updinitialDAC"}) {
    ExpectFace(panel, {{name, UpDown, ""}});
  }
  ExpectSpin(panel.UpDownARFCN, &panel.txtARFCN, 0, 1023);
  ExpectSpin(panel.UpDowndcs, &panel.txtdcsarfcn, 0, 1023);
  ExpectSpin(panel.updLoss, &panel.txtLoss, -200, 0);
  ExpectSpin(panel.updDCSLoss, &panel.txtDCSLoss, -200, 0);
  ExpectSpin(panel.updAutoCalAFC, &panel.txtAutoCalAFC, -4096, 4095);
  ExpectSpin(panel.updAutocalSetPointIL, &panel.txtAutocalSetPointIL, -120, 0);
  ExpectSpin(panel.updPowerIndex, &panel.txtPowerIndex, 0, 19);
  ExpectSpin(panel.updPowerIndexLevel, &panel.txtPowerIndexLevel, 0, 33);
  ExpectSpin(panel.updinitialLevel, &panel.txtinitialLevel, 0, 19);
  ExpectSpin(panel.updinitialDAC, &panel.txtinitialDAC, 0, 1023);
  // These two count tenths in a value of their own.
  ExpectSpin(panel.updRxCableLossGSM, nullptr, -200, 0);
  ExpectSpin(panel.updRxCableLossDCS, nullptr, -200, 0);
  EXPECT_EQ(panel.updRxCableLossGSM.Value(), -5);
  EXPECT_EQ(panel.updRxCableLossDCS.Value(), -5);
}

}  // namespace
}  // namespace orvane::test
