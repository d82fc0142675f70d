#include "txcal/frm_auto_cal.h"

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

TEST(FrmAutoCal, ItsSpinsHaveTheirRanges) {
  struct Row {
    orvane::UpDown FrmAutoCal::*spin;
    const char* name;
    Long min;
    Long max;
  };
  FrmAutoCal panel;
  for (const Row& row :
       {Row{&FrmAutoCal::UpDownARFCN, "UpDownARFCN", 0, 1023}, Row{&FrmAutoCal::UpDowndcs, "UpDowndcs", 0, 1023},
        Row{&FrmAutoCal::updLoss, "updLoss", -200, 0}, Row{&FrmAutoCal::updDCSLoss, "updDCSLoss", -200, 0},
        Row{&FrmAutoCal::updRxCableLossGSM, "updRxCableLossGSM", -200, 0},
        Row{&FrmAutoCal::updRxCableLossDCS, "updRxCableLossDCS", -200, 0},
        Row{&FrmAutoCal::updAutoCalAFC, "updAutoCalAFC", -4096, 4095},
        Row{&FrmAutoCal::updAutocalSetPointIL, "updAutocalSetPointIL", -120, 0}}) {
    const orvane::UpDown& spin = panel.*row.spin;
    EXPECT_EQ(spin.Name(), row.name);
    EXPECT_EQ(spin.Min(), row.min) << row.name;
    EXPECT_EQ(spin.Max(), row.max) << row.name;
    EXPECT_EQ(spin.Step(), 1) << row.name;
  }
}

}  // namespace
}  // namespace orvane::test
