#include "console/orvane_main.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/face_rows.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;

using enum ControlKind;

TEST(OrvaneMain, ShowsItsConsoleItsCommandLineAndThreeTabs) {
  const OrvaneMain panel;
  EXPECT_EQ(panel.Name(), "OrvaneMain");
  ExpectFace(panel, {{"txtResults", Text, ""},
                     {"lblUserCommand", Label, "User Command:"},
                     {"txtUserCommand", Text, ""},
                     {"cmdLogOn", Button, "Log On/Off"},
                     {"cmdResultClear", Button, "Clear"},
                     {"cmdAutoCal", Button, "AUTO CAL"},
                     {"Command1", Button, "BASE BAND"},
                     {"Command2", Button, "DOWN LOAD"},
                     {"cmdExit", Button, "Exit"}});
  EXPECT_THAT(panel.SSTab1.Tabs(), ElementsAre("SYSTEM", "RX", "TX"));
  EXPECT_EQ(panel.SSTab1.Selected(), 0);
}

TEST(OrvaneMain, ConnectsTargetAndInstrumentsOnTheSystemTab) {
  const OrvaneMain panel;
  ExpectFace(panel, {{"fraTargetSystem", Frame, "Target System (Serial) "},
                     {"lblComPort", Label, "Port Setting"},
                     {"cboPort", Combo, "COM1"},
                     {"lblTarget", Label, "Target"},
                     {"cboTarget", Combo, "T9300"},
                     {"lblSyncDelay", Label, "Sync Delay"},
                     {"txtSyncDelay", Text, "20000"},
                     {"updSyncDelay", UpDown, ""},
                     {"cmdTargetInitialize", Button, "Initialize"},
                     {"cmdTargetReset", Button, "Reset"},
                     {"shpTargetOnOff", Lamp, ""},
                     {"fraInstrument", Frame, "Instrument (GPIB)"},
                     {"lblInstrumentList", Label, "Instruments"},
                     {"cboInstrumentList", Combo, "HP8960"},
                     {"lblPrimaryAddress", Label, "Primary Address"},
                     {"cboPrimaryAddress", Combo, "1"},
                     {"lblTimeOut", Label, "Time Out"},
                     {"cboTimeOut", Combo, "10s"},
                     {"cmdInstrumentInitialize", Button, "Initialize"},
                     {"cmdInsturmentReset", Button, "Reset"},
                     {"shpInstrumentOnOff", Lamp, ""},
                     {"Frame5", Frame, "Power Supply (GPIB)"},
                     {"cmdPSInitialize", Button, "Initialize"},
                     {"cmdPSReset", Button, "Reset"},
                     {"cmdPSVoltageSet", Button, "Voltage Set"},
                     {"txtPSVoltage", Text, "4.21"},
                     {"txtVoltageLoss", Text, "0.01"}});
}

TEST(OrvaneMain, OffersPortsTargetsTestSetsAndAddresses) {
  const OrvaneMain panel;
  EXPECT_THAT(panel.cboPort.Items(), ElementsAre("COM1", "COM2", "COM3", "COM4"));
  EXPECT_THAT(panel.cboTarget.Items(), ElementsAre("QM310", "QM420", "T9300"));
  EXPECT_THAT(panel.cboInstrumentList.Items(), ElementsAre("HP8922M", "HP8960", "4400M(WaveTek)"));
  ASSERT_EQ(panel.cboPrimaryAddress.Items().size(), 31U);
  EXPECT_EQ(panel.cboPrimaryAddress.Items().front(), "0");
  EXPECT_EQ(panel.cboPrimaryAddress.Items().back(), "30");
  EXPECT_THAT(panel.cboTimeOut.Items(), ElementsAre("None", "10us", "30us", "100us", "300us", "1ms", "3ms", "10ms",
                                                    "30ms", "100ms", "300ms", "1s", "3s", "10s", "30s", "100s"));
}

TEST(OrvaneMain, StepsThePaceCountByThousands) {
  OrvaneMain panel;
  panel.updSyncDelay.StepBy(1);
  EXPECT_EQ(panel.txtSyncDelay.Text(), "21000");
  EXPECT_EQ(panel.updSyncDelay.Min(), 0);
  EXPECT_EQ(panel.updSyncDelay.Max(), 1000000);
}

}  // namespace
}  // namespace orvane::test
