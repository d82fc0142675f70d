#include "base/failure.h"
#include "charger/charger_count.h"
#include "charger_rig.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(ChargerCount, IsFourHexadecimalDigitsFromTheThirdCharacterOn) {
  const struct {
    const char* text;
    int count;
  } rows[] = {{"0x0270", 0x270}, {"0x0064", 0x64},  {"0x00123", 0x12},           {"0x27", 0x27},
              {"0xFFFF", -1},    {"zz01F0", 0x1F0}, {"\xEF\xBC\x90x0270", 0x270}};
  for (const auto& row : rows) EXPECT_EQ(CountOf(row.text), row.count) << row.text;
  for (const char* bad : {"", "0", "0x", "0xG000"}) EXPECT_THROW((void)CountOf(bad), StationFailure) << bad;
}

TEST(ChargerParameters, WorkedExample) {
  const auto results = CalculateParameters({624, 496, 100, 500, "3.35"_d4});
  EXPECT_EQ(results.ccDac, 567);  // 567.28 from a slope of 0.0017
  EXPECT_EQ(results.cvCut, 136);  // 135.7
}

TEST(ChargerParameters, AnotherShutDownVoltageAloneChangesBoth) {
  // K = (1.05 - 0.775) / 128 = 0.00214..., held as 0.0021; Y = 1.05 - 0.0021 * 524 = -0.0504.
  const auto results = CalculateParameters({624, 496, 100, 500, "3.1"_d4});
  EXPECT_EQ(results.ccDac, 451);  // 500 + (-0.0504 + 1.0119 - 1.05) / 0.0018 = 450.83
  EXPECT_EQ(results.cvCut, 129);  // 100 + 0.0607 / 0.0021 = 128.9
}

TEST(ChargerParameters, ASlopeThatRoundsToZeroCannotDivide) {
  EXPECT_THROW((void)CalculateParameters({10000, 0, 100, 500, "3.35"_d4}), StationFailure);
}

TEST(ChargerParameters, SumsOverflowAt16Bits) {
  EXPECT_THROW((void)CalculateParameters({32000, -32000, 100, 500, "3.35"_d4}), StationFailure);
  EXPECT_THROW((void)CalculateParameters({624, 496, 100, 32767, "3.35"_d4}), StationFailure);
}

struct ChargerParameterTest : ::testing::Test {
  ChargerParameterTest() {
    rig.OpenPort();
    face.txtCC2CVADC.SetText("0x0270");
    face.txtShutDownADC.SetText("0x01F0");
    face.txtZeroCal.SetText("0x0064");
    face.txtCVDACResult.SetText("0x01F4");
  }
  std::optional<std::string> Click(Button& button) {
    return rig.Act([&] { button.Click(); });
  }
  ChargerRig rig;
  FrmBaseBand& face = rig.panels.baseBand;
};

TEST_F(ChargerParameterTest, ResultsStandInTheirBoxesAheadOfTheMissingList) {
  EXPECT_TRUE(Click(face.cmdCalculateParameter));
  EXPECT_EQ(face.txtCCDACResult.Text(), "0x0237");
  EXPECT_EQ(face.TxtCVCutValue.Text(), "0x0088");
  EXPECT_EQ(face.txtChargerDisplay.Text(),
            "CCtoCV_Voltage = 0x270\r\nCVtoFull_ChargeCurrent = 0x88\r\nCCDAC_Value = 0x237\r\n"
            "CVDAC_Value = 0x1F4\r\nShutDown_Voltage = 0x1F0\r\n");
}

TEST_F(ChargerParameterTest, EachEmptyBoxHasItsWords) {
  const struct {
    TextBox& box;
    const char* words;
  } rows[] = {{face.txtCVDACResult, "CV DAC Value is needed."},
              {face.txtZeroCal, "Zero Calibration Value is needed."},
              {face.txtShutDownADC, "3.1V ADC Value is needed."},
              {face.txtCC2CVADC, "4.2V ADC Value is needed."}};
  for (const auto& row : rows) {
    row.box.SetText("");
    EXPECT_FALSE(Click(face.cmdCalculateParameter));
    EXPECT_EQ(rig.boxes.shown.back().text, row.words);
    EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
    EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Stop);
  }
  rig.serial.Close();
  Click(face.cmdCalculateParameter);
  EXPECT_EQ(rig.boxes.shown.back().text, "Target must be initialized at first.");
}

TEST_F(ChargerParameterTest, FiftyCountsApartIsEnoughAnd49IsNot) {
  face.txtShutDownADC.SetText("0x023F");  // 575
  Click(face.cmdCalculateParameter);
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Measured value is not valid. Try Auto Cal again."));
  EXPECT_EQ(face.txtCCDACResult.Text(), "");
  rig.boxes.shown.clear();
  face.txtShutDownADC.SetText("0x023E");  // 574
  Click(face.cmdCalculateParameter);
  EXPECT_NE(face.txtCCDACResult.Text(), "");
}

TEST_F(ChargerParameterTest, ANegativeResultIsFourDigitsBehindThePrefix) {
  face.txtZeroCal.SetText("0x0000");
  face.txtCVDACResult.SetText("0x0000");
  Click(face.cmdCalculateParameter);
  // Y = 1.05 - 0.0017 * 624 = -0.0108; (-0.0108 + 1.0119 - 1.05) / 0.0018 = -27.2
  EXPECT_EQ(face.txtCCDACResult.Text(), "0x0FFE5");
}

TEST(ChargerParameterList, TakesTheFiveLinesWhereThereIsOne) {
  struct LinesPanel : Panel {
    LinesPanel() : Panel("lines", "") {}
    ListBox list{*this, "list"};
  } lines;
  lines.list.AddItem("old");
  ChargerRig rig(&lines.list);
  rig.OpenPort();
  rig.face.txtCC2CVADC.SetText("0x0270");
  rig.face.txtShutDownADC.SetText("0x01F0");
  rig.face.txtZeroCal.SetText("0x0064");
  rig.face.txtCVDACResult.SetText("0x01F4");
  rig.face.cmdCalculateParameter.Click();
  EXPECT_THAT(lines.list.Items(),
              ElementsAre("CCtoCV_Voltage = 0x270", "CVtoFull_ChargeCurrent = 0x88", "CCDAC_Value = 0x237",
                          "CVDAC_Value = 0x1F4", "ShutDown_Voltage = 0x1F0"));
}

TEST_F(ChargerParameterTest, WriteFlashWritesReadsBackAndShows) {
  face.txtChargerDisplay.SetText("old");
  Click(face.cmdWriteChargerEEPROM);
  EXPECT_THAT(rig.Commands(), ElementsAre("stw 100 0x0270,0x0000,0x0000,0x0000,0x01F0", "str 100"));
  EXPECT_EQ(
      face.txtChargerDisplay.Text(),
      "CV_START_VOLTAGE     = 0x0270\r\nSHUTDOWN_VOLTAGE    = 0x01F0\r\n\r\n\r\nBattery Calibartion Success !!!");
  EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
  EXPECT_FALSE(rig.state.cal.CalFailed);
}

TEST_F(ChargerParameterTest, WriteFlashNeedsBothCounts) {
  face.txtShutDownADC.SetText("");
  Click(face.cmdWriteChargerEEPROM);
  face.txtCC2CVADC.SetText("");
  Click(face.cmdWriteChargerEEPROM);
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("3.35V ADC Value is needed.", "4.2V ADC Value is needed."));
  EXPECT_THAT(rig.Commands(), IsEmpty());
}

TEST_F(ChargerParameterTest, WriteFlashOutsideTestModeSaysNothing) {
  rig.state.reply.TargetMode = "NormalMode";
  rig.serial.Close();
  Click(face.cmdWriteChargerEEPROM);
  EXPECT_THAT(rig.journal.Lines(), IsEmpty());
}

TEST_F(ChargerParameterTest, WriteFlashNeedsAnOpenPort) {
  rig.serial.Close();
  Click(face.cmdWriteChargerEEPROM);
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("box: Target must be initialized at first."));
}

TEST_F(ChargerParameterTest, AFailedWriteOrReadBackFailsTheUnit) {
  const struct {
    int operation;
    std::vector<std::string> commands;
  } rows[] = {{82, {"stw 100 0x0270,0x0000,0x0000,0x0000,0x01F0"}},
              {83, {"stw 100 0x0270,0x0000,0x0000,0x0000,0x01F0", "str 100"}}};
  for (const auto& row : rows) {
    rig.journal.Clear();
    rig.boxes.shown.clear();
    rig.state.cal = {};
    rig.failing = row.operation;
    Click(face.cmdWriteChargerEEPROM);
    EXPECT_EQ(rig.Commands(), row.commands);
    EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Battery Cal is not completed. Try again."));
    EXPECT_TRUE(rig.state.cal.CalFailed);
    EXPECT_TRUE(rig.state.cal.CalStopRequested);
  }
}

TEST_F(ChargerParameterTest, ASilentTargetFailsTheWriteToo) {
  rig.silent = true;
  const StepRecord step = rig.StepOf([&] { face.cmdWriteChargerEEPROM.Click(); });
  EXPECT_TRUE(rig.state.cal.CalFailed);
  // No failure status came that would have set it.
  EXPECT_TRUE(rig.state.cal.CalStopRequested);
  EXPECT_THAT(step.reason, HasSubstr("stw 100"));
}

}  // namespace
}  // namespace orvane::test
