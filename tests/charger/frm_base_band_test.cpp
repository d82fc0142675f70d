#include "charger/frm_base_band.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/face_rows.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;

using enum ControlKind;

TEST(FrmBaseBand, ShowsTheBenchAsItIsShipped) {
  const FrmBaseBand panel;
  EXPECT_EQ(panel.Name(), "frmBaseBand");
  EXPECT_EQ(panel.Caption(), "BaseBand");
  ExpectFace(panel, {{"cmdBaseBandClose", Button, "Close"},
                     {"fraPowerSupply", Frame, "Power Supply"},
                     {"txtPSBoardNumber", Text, "0"},
                     {"cboPSPrimAddress", Combo, "2"},
                     {"cboPSSecAddress", Combo, "None"},
                     {"cboPSTimeOut", Combo, "10s"},
                     {"TxtPSBufferSize", Text, "1000"},
                     {"cmdPSInitialize", Button, "Initialize"},
                     {"cmdPSReset", Button, "Reset"},
                     {"txtPSVoltage", Text, "4.21"},
                     {"cmdPSVoltageSet", Button, "Voltage Set"},
                     {"txtVoltageLoss", Text, "0.01"},
                     {"cmdPSVoltageEnable", Button, "Enable"},
                     {"fraLoader", Frame, "Loader"},
                     {"txtLoaderBoardNumber", Text, "0"},
                     {"cboLoaderPrimAddress", Combo, "5"},
                     {"cboLoaderSecAddress", Combo, "None"},
                     {"cboLoaderTimeOut", Combo, "10s"},
                     {"TxtLoaderBufferSize", Text, "1000"},
                     {"cmdLoaderInitialize", Button, "Initialize"},
                     {"cmdLoaderReset", Button, "Reset"},
                     {"TxtLoaderCurrent", Text, "0.1"},
                     {"cmdLoaderCurrentSet", Button, "Current"},
                     {"txtLoaderResister", Text, "2000"},
                     {"cmdLoaderResisterSet", Button, "Resister"},
                     {"optLoaderUse", Option, "Use Loader"},
                     {"optLoaderDisuse", Option, "Disuse Loader"}});
}

TEST(FrmBaseBand, ShowsTheChargerAsItIsShipped) {
  const FrmBaseBand panel;
  ExpectFace(panel, {{"cmdChargerAutoCal", Button, "AutoCal"},
                     {"cmdBatCalEnable", Button, "Calibration Enable"},
                     {"cmdBatCalDisable", Button, "Calibration Disable"},
                     {"shpBatCalOnOff", Lamp, ""},
                     {"cmdCC2CVADC", Button, "4.2 V"},
                     {"txtCC2CVADC", Text, ""},
                     {"cmdShutDownADC", Button, "ShutDown"},
                     {"txtShutDownADC", Text, ""},
                     {"cmdZeroCal", Button, "ZeroCal"},
                     {"txtZeroCal", Text, ""},
                     {"cmdCVDAC", Button, "CV DAC"},
                     {"txtCVDACResult", Text, ""},
                     {"txtLoopTime", Text, ""},
                     {"cboShutDownVoltage", Combo, "3.35"},
                     {"cboDelay", Combo, "400"},
                     {"txtChargerDisplay", Text, ""},
                     {"fraChargerDisplay", Frame, "Data to write in Flash"},
                     {"cmdCalculateParameter", Button, "Calculate"},
                     {"cmdWriteChargerEEPROM", Button, "Write Flash"},
                     {"fraCalculatedResults", Frame, "Calculated Results"},
                     {"txtCCDACResult", Text, ""},
                     {"TxtCVCutValue", Text, ""}});
}

TEST(FrmBaseBand, OffersTheAddressesOfABusAndTheTimeOutsOfItsControl) {
  const FrmBaseBand panel;
  for (const BenchSessionFace* face : {&panel.supply, &panel.load}) {
    const auto& primary = face->primAddress.Items();
    ASSERT_EQ(primary.size(), 15U);
    EXPECT_EQ(primary.front(), "0");
    EXPECT_EQ(primary.back(), "14");
    const auto& secondary = face->secAddress.Items();
    ASSERT_EQ(secondary.size(), 32U);
    EXPECT_EQ(secondary[0], "None");
    EXPECT_EQ(secondary[1], "96");
    EXPECT_EQ(secondary[31], "126");
    EXPECT_THAT(face->timeOut.Items(), ElementsAre("None", "10us", "30us", "100us", "300us", "1ms", "3ms", "10ms",
                                                   "30ms", "100ms", "300ms", "1s", "3s", "10s", "30s", "100s"));
  }
}

TEST(FrmBaseBand, OffersOneShutDownVoltageAndDelaysInHundreds) {
  const FrmBaseBand panel;
  EXPECT_THAT(panel.cboShutDownVoltage.Items(), ElementsAre("3.35"));
  EXPECT_THAT(panel.cboDelay.Items(), ElementsAre("100", "200", "300", "400", "500", "600", "700", "800", "900",
                                                  "1000", "1100", "1200", "1300", "1400", "1500"));
}

}  // namespace
}  // namespace orvane::test
