#include "panels/frm_mp_auto_cal.h"

#include <gmock/gmock.h>

#include "support/face_rows.h"

namespace orvane::test {
namespace {

using enum ControlKind;

const std::vector<FaceRow> kReceiveSide{
    {"cmdMPRxAllAutoCal", Button, "Rx Auto Cal"},
    {"cmdMPAutoCalClose", Button, "Close"},
    {"frmMPAutoCalRx", Frame, "Rx Part"},
    {"frmGSMRxCal", Frame, "GSM / EGSM Band"},
    {"lblGBand1", Label, "GBand1"},
    {"txtGSMArfcn1", Text, "0"},
    {"lblGBand2", Label, "GBand2"},
    {"txtGSMArfcn2", Text, "40"},
    {"lblGBand3", Label, "GBand3"},
    {"txtGSMArfcn3", Text, "124"},
    {"lblEBand1", Label, "EBand1"},
    {"txtEGSMArfcn1", Text, "975"},
    {"lblEBand2", Label, "EBand2"},
    {"txtEGSMArfcn2", Text, "1023"},
    {"frmDCSRxCal", Frame, "DCS Band"},
    {"lblBand1", Label, "Band1"},
    {"txtDCSArfcn1", Text, "512"},
    {"lblBand2", Label, "Band2"},
    {"txtDCSArfcn2", Text, "574"},
    {"lblBand3", Label, "Band3"},
    {"txtDCSArfcn3", Text, "636"},
    {"lblBand4", Label, "Band4"},
    {"txtDCSArfcn4", Text, "700"},
    {"lblBand5", Label, "Band5"},
    {"txtDCSArfcn5", Text, "760"},
    {"lblBand6", Label, "Band6"},
    {"txtDCSArfcn6", Text, "822"},
    {"lblBand7", Label, "Band7"},
    {"txtDCSArfcn7", Text, "885"},
    {"frmMPAutoCalGMAGIC", Frame, "G-MAGIC"},
    {"lblMPGMAGICGSM900F80", Label, "F 8.0"},
    {"txtMPGMAGICGSM900F80", Text, ""},
    {"lblMPGMAGICGSM900F71", Label, "F 7.1"},
    {"txtMPGMAGICGSM900F71", Text, ""},
    {"lblMPGMAGICDCS1800F80", Label, "F 8.0"},
    {"txtMPGMAGICDCS1800F80", Text, ""},
    {"lblMPGMAGICDCS1800F71", Label, "F 7.1"},
    {"txtMPGMAGICDCS1800F71", Text, ""},
    {"fraMPRxResults", Frame, "Rx Results"},
    {"lstMPRxChannelCalResult", List, ""},
};

const std::vector<FaceRow> kTransmitSide{
    {"frmMPAutoCalTx", Frame, "Tx Part"},
    {"cmdMPTxAutoCal", Button, "Level Use"},
    {"cmdSlopeUse", Button, "Slope Use"},
    {"cmdDACuse", Button, "DAC Use"},
    {"fraDACUse", Frame, "APCDAC OR Slope Method"},
    {"lblDACUseGSM1", Label, "GSM1"},
    {"txtDACUseGSM1", Text, "700"},
    {"lblDACUseGSM2", Label, "GSM2"},
    {"txtDACUseGSM2", Text, "50"},
    {"lblDACUseDCS1", Label, "DCS1"},
    {"txtDACUseDCS1", Text, "950"},
    {"lblDACUseDCS2", Label, "DCS2"},
    {"txtDACUseDCS2", Text, "50"},
    {"fraTargetLevel", Frame, "Target Level Method"},
    {"lblTargetLevel1", Label, "Level1"},
    {"lblTargetLevel2", Label, "Level2"},
    {"lblTargetLevel3", Label, "Level3"},
    {"lblTargetLevel4", Label, "Level4"},
    {"lblTargetLevelGSM", Label, "GSM"},
    {"lblTargetLevelDCS", Label, "DCS"},
    {"txtTargetLevel1", Text, "5"},
    {"txtTargetLevel2", Text, "10"},
    {"txtTargetLevel3", Text, "15"},
    {"txtTargetLevel4", Text, "19"},
    {"txtTargetLevel5", Text, "0"},
    {"txtTargetLevel6", Text, "5"},
    {"txtTargetLevel7", Text, "10"},
    {"txtTargetLevel8", Text, "15"},
    {"fraMPTxResults", Frame, "Tx Results"},
    {"listMPTxResults", List, ""},
    {"fraAPCDACPattern", Frame, "APCDAC Pattern"},
    {"optGSMPattern", Option, "GSM"},
    {"optDCSPattern", Option, "DCS"},
    {"txtMPPattern", Text, "0"},
    {"updMPPattern", UpDown, ""},
    {"txtMPLevel", Text, "5"},
    {"updMPLevel", UpDown, ""},
    {"txtMPDAC", Text, "750"},
    {"updMPDAC", UpDown, ""},
    {"cmdMPSet", Button, "Set"},
    {"cmdPatternLoad", Button, "Load"},
};

TEST(MpAutoCalFace, StandsAsShipped) {
  const FrmMPAutoCal face;
  EXPECT_EQ(face.Name(), "frmMPAutoCal");
  EXPECT_EQ(face.Caption(), "MP Auto Cal");
  ExpectFace(face, kReceiveSide);
  ExpectFace(face, kTransmitSide);
  EXPECT_TRUE(face.optGSMPattern.Selected());
  ExpectSpin(face.updMPPattern, &face.txtMPPattern, 0, 2);
  ExpectSpin(face.updMPLevel, &face.txtMPLevel, 5, 19);
  ExpectSpin(face.updMPDAC, &face.txtMPDAC, 0, 1023);
}

}  // namespace
}  // namespace orvane::test
