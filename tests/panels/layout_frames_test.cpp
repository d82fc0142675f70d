#include <gmock/gmock.h>

#include <set>

#include "app/layouts_rig.h"

namespace orvane::test {
namespace {

using testing::Contains;
using testing::ElementsAreArray;

struct FrameRow {
  const char* frame;
  std::vector<std::string> controls;
};

TEST_F(Layouts, FramesOfTheMainPanelHoldWhatBelongsToThem) {
  const std::vector<FrameRow> rows{
      {"fraTargetSystem",
       {"cboPort", "cboTarget", "cmdTargetInitialize", "cmdTargetReset", "lblComPort", "lblSyncDelay", "lblTarget",
        "shpTargetOnOff", "txtSyncDelay", "updSyncDelay"}},
      {"fraInstrument",
       {"cboInstrumentList", "cboPrimaryAddress", "cboTimeOut", "cmdInstrumentInitialize", "cmdInsturmentReset",
        "lblInstrumentList", "lblPrimaryAddress", "lblTimeOut", "shpInstrumentOnOff"}},
      {"Frame5", {"cmdPSInitialize", "cmdPSReset", "cmdPSVoltageSet", "txtPSVoltage", "txtVoltageLoss"}},
      {"fraBeacon", {"cmdBeaconSet", "txtBeacon"}},
      {"fraServing", {"cmdServingSet", "txtServing"}},
      {"fraAGCValue", {"chkLNAOnOff", "cmdAGCValue", "txtAGCValue"}},
      {"fraAFCValue", {"cmdAFCValueSet", "txtAFCValue"}},
      {"fraFBTest", {"cboFBMode", "cmdFBTest", "txtFBFrame"}},
      {"fraPMStart", {"cmdPMStart", "txtPMFrame"}},
      {"fraAGCPM", {"txtAGCPM", "txtAGCPMStandardDeviation"}},
      {"fraAGCPowerLevel", {"cmdAGCPowerLevelSet", "txtAGCPowerLevel", "updAGCPowerLevel"}},
      {"fraRxTargetRFMode", {"RXTargetSet", "cboRxTargetRFMode"}},
      {"fraTxLevel",
       {"Command4", "cmdPowerlevelSet", "lblPowerLevel", "lblTxLevelIndex", "optTxLevelDCS", "optTxLevelGSM",
        "txtPowerLevel", "txtTxLevelIndex", "updPowerLevel", "updTxLevelIndex"}},
      {"fraULTest", {"cboULPattern", "cboULSlot", "cmdULTest", "lblULPattern", "lblULSlot"}},
      {"fraTxTargetRFMode", {"TXTargetSet", "cboTxTargetRFMode"}},
      {"fraAPCLoss", {"cmdAPCLoss", "txtAPCLoss", "updAPCLoss"}},
  };
  for (const auto& row : rows)
    EXPECT_THAT(HeldBy(panels_.main, row.frame), ElementsAreArray(row.controls)) << row.frame;
}

TEST_F(Layouts, EachTabOfTheMainPanelHoldsItsGroups) {
  struct TabRow {
    std::size_t tab;
    std::vector<const Control*> controls;
  };
  OrvaneMain& main = panels_.main;
  const std::vector<TabRow> rows{
      {0, {&main.fraTargetSystem, &main.fraInstrument, &main.Frame5}},
      {1,
       {&main.fraBeacon, &main.fraServing, &main.fraAGCValue, &main.fraAFCValue, &main.fraFBTest, &main.fraPMStart,
        &main.fraAGCPM, &main.fraAGCPowerLevel, &main.fraRxTargetRFMode}},
      {2,
       {&main.fraTxLevel, &main.fraULTest, &main.fraTxTargetRFMode, &main.fraAPCLoss, &main.cboDELU, &main.cboDELD,
        &main.cmdRampDelaySet, &main.ramp.txtRampTableIndex, &main.ramp.setToTarget}},
  };
  std::set<const Control*> onTabs;
  for (const Layout* part : AllParts(Of(main))) {
    if (part->kind != Layout::Kind::Tabs) continue;
    for (const TabRow& row : rows) {
      const auto placed = PlacedControls(part->parts.at(row.tab));
      for (const Control* control : row.controls) EXPECT_THAT(placed, Contains(control)) << control->Name();
      onTabs.insert(placed.begin(), placed.end());
    }
  }
  for (const Control* control : std::vector<const Control*>{
           &main.lblResults, &main.txtResults, &main.lblUserCommand, &main.txtUserCommand, &main.cmdLogOn,
           &main.cmdResultClear, &main.cmdAutoCal, &main.Command1, &main.Command2, &main.cmdExit}) {
    EXPECT_FALSE(onTabs.contains(control)) << control->Name();
  }
}

TEST_F(Layouts, TheRampEditorIsTheSameOnBothPanels) {
  for (const Panel* panel : std::vector<const Panel*>{&panels_.main, &panels_.rampTable}) {
    EXPECT_EQ(HeldBy(*panel, "fraRampShapeTable(0)").size(), 48U);
    EXPECT_THAT(HeldBy(*panel, "fraRampShapeTable(0)"), Contains("txtUP(15)"));
    EXPECT_EQ(HeldBy(*panel, "fraRampShapeTable(1)").size(), 48U);
    EXPECT_THAT(HeldBy(*panel, "fraRampShapeTable(1)"), Contains("txtDN(0)"));
    EXPECT_THAT(HeldBy(*panel, "fraRampStorageMode"), Contains("optTarget"));
    EXPECT_THAT(HeldBy(*panel, "fraRampTableIndex"),
                ElementsAreArray({"cmdRampIndexset", "lblRampIndex", "txtRampTableIndex", "updRampTableIndex"}));
    EXPECT_THAT(HeldBy(*panel, "fraRampUpStatus"), ElementsAreArray({"lblRampUpStatus", "txtRampUpStatus"}));
    EXPECT_THAT(HeldBy(*panel, "fraRampDownStatus"), ElementsAreArray({"lblRampDownStatus", "txtRampDownStatus"}));
  }
}

TEST_F(Layouts, FramesOfTheDownloadPanelHoldWhatBelongsToThem) {
  const std::vector<FrameRow> rows{
      {"fraDownloadMode", {"optFullDownload", "optPartialDownload"}},
      {"fraBBOption", {"chkChargerParam"}},
      {"fraDownloadOption",
       {"cmdEepromDownLoad", "cmdUpLoad", "optDownloadFileLoad", "optDownloadFlash", "optDownloadRAM"}},
      {"fraFlashTest", {"cmdse"}},
      {"fraActionMode", {"optEepromRead", "optEepromWrite"}},
      {"fraBytePageMode", {"optEepromByte", "optEepromPage"}},
      {"fraStratAddresLength",
       {"lblEepromAddress", "lblEepromLength", "txtEepromLength", "txtEepromStartAddress", "updEepromLength",
        "updEepromStartAddress"}},
      {"fraEepromDataRead", {"lstDataReadWindow"}},
      {"fraEepromDataWrite",
       {"lblDisplayAddress", "lblEepromData", "txtEepromDataWrite", "txtEepromDataWriteAddress"}},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(HeldBy(panels_.downLoad, row.frame), ElementsAreArray(row.controls)) << row.frame;
  }
}

TEST_F(Layouts, FramesOfTheCalibrationPanelHoldWhatBelongsToThem) {
  const std::vector<FrameRow> rows{
      {"fraPowerIndex",
       {"cmdPowerIndexLoad", "cmdPowerIndexSave", "cmdPowerIndexSet", "optPowerIndexDCS", "optPowerIndexGSM",
        "txtPowerIndex", "txtPowerIndexLevel", "updPowerIndex", "updPowerIndexLevel"}},
      {"fraInitialValue",
       {"cmdinitialLoad", "cmdinitialSave", "cmdinitialSet", "optinitialDCS", "optinitialGSM", "txtinitialDAC",
        "txtinitialLevel", "updinitialDAC", "updinitialLevel"}},
      {"fraCableLoss", {"cmdRxLossLoad", "cmdRxLossSave", "cmdRxLossSet"}},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(HeldBy(panels_.autoCal, row.frame), ElementsAreArray(row.controls)) << row.frame;
  }
}

TEST_F(Layouts, FramesOfTheProductionPanelHoldWhatBelongsToThem) {
  FrmMPAutoCal& panel = panels_.mpAutoCal;
  const auto rx = HeldBy(panel, "frmMPAutoCalRx");
  for (const TextBox* box : panel.ArfcnBoxes()) EXPECT_THAT(rx, Contains(box->Name()));
  for (const char* frame : {"frmGSMRxCal", "frmDCSRxCal", "frmMPAutoCalGMAGIC", "fraMPRxResults"}) {
    EXPECT_THAT(rx, Contains(frame));
  }
  const auto tx = HeldBy(panel, "frmMPAutoCalTx");
  for (const char* inside : {"cmdMPTxAutoCal", "cmdSlopeUse", "cmdDACuse", "fraDACUse", "fraTargetLevel",
                             "fraMPTxResults", "fraAPCDACPattern"}) {
    EXPECT_THAT(tx, Contains(inside));
  }
  EXPECT_EQ(HeldBy(panel, "frmGSMRxCal").size(), 15U);
  EXPECT_EQ(HeldBy(panel, "frmDCSRxCal").size(), 21U);
  EXPECT_THAT(HeldBy(panel, "fraMPRxResults"), ElementsAreArray({"lstMPRxChannelCalResult"}));
  EXPECT_THAT(HeldBy(panel, "fraMPTxResults"), ElementsAreArray({"listMPTxResults"}));
  EXPECT_EQ(HeldBy(panel, "fraDACUse").size(), 8U);
  EXPECT_EQ(HeldBy(panel, "fraTargetLevel").size(), 14U);
  EXPECT_THAT(HeldBy(panel, "fraAPCDACPattern"),
              ElementsAreArray({"cmdMPSet", "cmdPatternLoad", "lblMPDAC", "lblMPLevel", "lblMPPattern",
                                "optDCSPattern", "optGSMPattern", "txtMPDAC", "txtMPLevel", "txtMPPattern",
                                "updMPDAC", "updMPLevel", "updMPPattern"}));
}

TEST_F(Layouts, FramesOfTheBaseBandPanelHoldWhatBelongsToThem) {
  FrmBaseBand& panel = panels_.baseBand;
  const auto supply = HeldBy(panel, "fraPowerSupply");
  for (const char* inside :
       {"txtPSBoardNumber", "cboPSPrimAddress", "cboPSSecAddress", "cboPSTimeOut", "TxtPSBufferSize",
        "cmdPSInitialize", "cmdPSReset", "txtPSVoltage", "cmdPSVoltageSet", "txtVoltageLoss", "cmdPSVoltageEnable"}) {
    EXPECT_THAT(supply, Contains(inside));
  }
  const auto load = HeldBy(panel, "fraLoader");
  for (const char* inside :
       {"txtLoaderBoardNumber", "cboLoaderPrimAddress", "cboLoaderSecAddress", "cboLoaderTimeOut",
        "TxtLoaderBufferSize", "cmdLoaderInitialize", "cmdLoaderReset", "TxtLoaderCurrent", "cmdLoaderCurrentSet",
        "txtLoaderResister", "cmdLoaderResisterSet", "optLoaderUse", "optLoaderDisuse"}) {
    EXPECT_THAT(load, Contains(inside));
  }
  EXPECT_THAT(HeldBy(panel, "fraChargerDisplay"), ElementsAreArray({"txtChargerDisplay"}));
  EXPECT_THAT(HeldBy(panel, "fraCalculatedResults"),
              ElementsAreArray({"TxtCVCutValue", "lblCCDACResult", "lblCVCutValue", "txtCCDACResult"}));
}

TEST_F(Layouts, FramesOfTheResultPanelsHoldTheirLists) {
  const std::vector<FrameRow> tx{{"fraCalResults", {"listPeakPower"}},
                                 {"fraPowerLevel", {"listPowerLevel"}},
                                 {"fraCHANNELCAL", {"listChanCalPeakPower"}},
                                 {"fraChanCalPowerLevel", {"listChanCalPowerLevel"}}};
  for (const auto& row : tx) {
    EXPECT_THAT(HeldBy(panels_.txResult, row.frame), ElementsAreArray(row.controls)) << row.frame;
  }
  const std::vector<FrameRow> rx{{"fraRawRxResults", {"lstRawRxResults"}},
                                 {"fraConvertedRxResults", {"lstConvertedRxResults"}},
                                 {"fraRxChannelCompensation", {"lstRxChannelCompensation"}},
                                 {"fraRxTemperatureCompensation", {"lstRxCalChannelBands"}}};
  for (const auto& row : rx) {
    EXPECT_THAT(HeldBy(panels_.rxResult, row.frame), ElementsAreArray(row.controls)) << row.frame;
  }
}

}  // namespace
}  // namespace orvane::test
