#include "panels/orvane_main.h"

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
  ExpectFace(panel, {{"lblResults", Label, "Results"},
                     {"txtResults", Text, ""},
                     {"lblUserCommand", Label, "User Command:"},
                     {"txtUserCommand", Text, ""},
                     {"cmdLogOn", Button, "Log On/Off"},
                     {"cmdResultClear", Button, "Clear"},
                     {"cmdAutoCal", Button, "AUTO CAL"},
                     {"Command1", Button, "BASE BAND"},
                     {"Command2", Button, "DOWN LOAD"},
                     {"cmdExit", Button, "Exit"},
                     {"SSTab1", Tab, ""}});
  EXPECT_THAT(panel.SSTab1.Tabs(), ElementsAre("SYSTEM", "RX", "TX"));
  EXPECT_EQ(panel.SSTab1.Selected(), 0);
  ExpectDialog(panel.dlgOpenLog, "Results Log On", "로그파일(*.log)|*.log|All Files (*.*)|*.*", "LOG");
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

TEST(OrvaneMain, HoldsTheReceiverTestsOnTheRxTab) {
  const OrvaneMain panel;
  ExpectFace(panel, {{"fraBeacon", Frame, "BCH Freq Setting"},
                     {"txtBeacon", Text, "30"},
                     {"cmdBeaconSet", Button, "Set"},
                     {"fraServing", Frame, "TCH Freq Setting"},
                     {"txtServing", Text, "30"},
                     {"cmdServingSet", Button, "Set"},
                     {"fraAGCValue", Frame, "AGC Value Setting"},
                     {"txtAGCValue", Text, "40"},
                     {"cmdAGCValue", Button, "Set"},
                     {"chkLNAOnOff", Check, "LNA On/Off"},
                     {"fraAFCValue", Frame, "AFC Value Setting"},
                     {"txtAFCValue", Text, "-1180"},
                     {"cmdAFCValueSet", Button, "Set"},
                     {"fraFBTest", Frame, "Frequency Burst Test"},
                     {"txtFBFrame", Text, "10"},
                     {"cboFBMode", Combo, "0"},
                     {"cmdFBTest", Button, "Test"},
                     {"fraPMStart", Frame, "Power Measure Set"},
                     {"txtPMFrame", Text, "10"},
                     {"cmdPMStart", Button, "PM Start"},
                     {"fraAGCPM", Frame, "Power Measure Display"},
                     {"txtAGCPM", Text, ""},
                     {"txtAGCPMStandardDeviation", Text, ""},
                     {"fraAGCPowerLevel", Frame, "Instrument BS Power Level Setting"},
                     {"txtAGCPowerLevel", Text, "-85"},
                     {"updAGCPowerLevel", UpDown, ""},
                     {"cmdAGCPowerLevelSet", Button, "Set"},
                     {"fraRxTargetRFMode", Frame, "Instrument RF MODE Setting"},
                     {"cboRxTargetRFMode", Combo, "GSM"},
                     {"RXTargetSet", Button, "Set"}});
  EXPECT_FALSE(panel.chkLNAOnOff.Checked());
  EXPECT_THAT(panel.cboFBMode.Items(), ElementsAre("0", "1"));
  EXPECT_THAT(panel.cboRxTargetRFMode.Items(), ElementsAre("GSM", "DCS"));
  ExpectSpin(panel.updAGCPowerLevel, &panel.txtAGCPowerLevel, -127, -7);
}

TEST(OrvaneMain, HoldsTheTransmitterTestsOnTheTxTab) {
  const OrvaneMain panel;
  ExpectFace(panel, {{"fraTxLevel", Frame, "Target Power Level Setting"},
                     {"optTxLevelGSM", Option, "GSM"},
                     {"optTxLevelDCS", Option, "DCS"},
                     {"lblTxLevelIndex", Label, "Index"},
                     {"txtTxLevelIndex", Text, "5"},
                     {"updTxLevelIndex", UpDown, ""},
                     {"Command4", Button, "Set"},
                     {"lblPowerLevel", Label, "DAC"},
                     {"txtPowerLevel", Text, "450"},
                     {"updPowerLevel", UpDown, ""},
                     {"cmdPowerlevelSet", Button, "Set"},
                     {"fraULTest", Frame, "Uplink Normal Burst test"},
                     {"lblULPattern", Label, "Pattern"},
                     {"cboULPattern", Combo, "All 0"},
                     {"lblULSlot", Label, "TSC"},
                     {"cboULSlot", Combo, "4"},
                     {"cmdULTest", Button, "Test"},
                     {"fraTxTargetRFMode", Frame, "Instrument RF Mode Setting"},
                     {"cboTxTargetRFMode", Combo, "GSM"},
                     {"TXTargetSet", Button, "Set"},
                     {"fraAPCLoss", Frame, "Instrument Loss"},
                     {"txtAPCLoss", Text, "-0.5"},
                     {"updAPCLoss", UpDown, ""},
                     {"cmdAPCLoss", Button, "Set"},
                     {"cboDELU", Combo, "0"},
                     {"cboDELD", Combo, "0"},
                     {"cmdRampDelaySet", Button, "Set"}});
  EXPECT_TRUE(panel.optTxLevelGSM.Selected());
  EXPECT_FALSE(panel.optTxLevelDCS.Selected());
  EXPECT_THAT(panel.cboULPattern.Items(), ElementsAre("All 0", "All 1", "1010"));
  EXPECT_THAT(panel.cboULSlot.Items(), ElementsAre("0", "1", "2", "3", "4", "5", "6", "7"));
  EXPECT_THAT(panel.cboTxTargetRFMode.Items(), ElementsAre("GSM", "DCS"));
  ExpectSpin(panel.updTxLevelIndex, &panel.txtTxLevelIndex, 0, 19);
  ExpectSpin(panel.updPowerLevel, &panel.txtPowerLevel, 0, 1023);
  // Keeps tenths of the box's number in a value of its own.
  ExpectSpin(panel.updAPCLoss, nullptr, -200, 0);
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
