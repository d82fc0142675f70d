#include "panels/frm_base_band.h"

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
                     {"lblPSBoardNumber", Label, "Board No"},
                     {"txtPSBoardNumber", Text, "0"},
                     {"lblPSPrimAddress", Label, "Prim Addr"},
                     {"cboPSPrimAddress", Combo, "2"},
                     {"lblPSSecAddress", Label, "Sec Addr"},
                     {"cboPSSecAddress", Combo, "None"},
                     {"lblPSTimeOut", Label, "Time Out"},
                     {"cboPSTimeOut", Combo, "10s"},
                     {"lblPSBufferSize", Label, "Buffer Size"},
                     {"TxtPSBufferSize", Text, "1000"},
                     {"cmdPSInitialize", Button, "Initialize"},
                     {"cmdPSReset", Button, "Reset"},
                     {"txtPSVoltage", Text, "4.21"},
                     {"cmdPSVoltageSet", Button, "Voltage Set"},
                     {"lblVoltageLoss", Label, "Voltage Loss"},
                     {"txtVoltageLoss", Text, "0.01"},
                     {"cmdPSVoltageEnable", Button, "Enable"},
                     {"fraLoader", Frame, "Loader"},
                     {"lblLoaderBoardNumber", Label, "Board No"},
                     {"txtLoaderBoardNumber", Text, "0"},
                     {"lblLoaderPrimAddress", Label, "Prim Addr"},
                     {"cboLoaderPrimAddress", Combo, "5"},
                     {"lblLoaderSecAddress", Label, "Sec Addr"},
                     {"cboLoaderSecAddress", Combo, "None"},
                     {"lblLoaderTimeOut", Label, "Time Out"},
                     {"cboLoaderTimeOut", Combo, "10s"},
                     {"lblLoaderBufferSize", Label, "Buffer Size"},
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
                     {"lblLoopTime", Label, "Loop Time"},
                     {"txtLoopTime", Text, ""},
                     {"lblShutDownVoltage", Label, "ShutDown"},
                     {"cboShutDownVoltage", Combo, "3.35"},
                     {"lblShutDownVoltageUnit", Label, "(V)"},
                     {"lblDelay", Label, "Delay"},
                     {"cboDelay", Combo, "400"},
                     {"txtChargerDisplay", Text, ""},
                     {"fraChargerDisplay", Frame, "Data to write in Flash"},
                     {"cmdCalculateParameter", Button, "Calculate"},
                     {"cmdWriteChargerEEPROM", Button, "Write Flash"},
                     {"fraCalculatedResults", Frame, "Calculated Results"},
                     {"lblCCDACResult", Label, "CC DAC"},
                     {"txtCCDACResult", Text, ""},
                     {"lblCVCutValue", Label, "CV Cut"},
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
