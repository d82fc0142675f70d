#include "console/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>

#include "console_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A parameter file whose value at each position is the position modulo 32.
std::string ParameterFile() {
  std::string text = "rf_revision\t=\tRF_PASCAL_20\r\n";
  for (int i = 1; i < 1857; ++i) text += "label\t=\t" + std::to_string(i % 32) + "\r\n";
  return text;
}

/// One record of a ramp table file: length, text, filler that says nothing.
std::string RampRecord(std::string_view text) {
  std::string record(128, '\xEE');
  record[0] = static_cast<char>(text.size());
  record[1] = '\0';
  record.replace(2, text.size(), text);
  return record;
}

std::string RampFile(std::string_view value) {
  std::string bytes;
  for (int i = 0; i < 992; ++i) bytes += RampRecord(value);
  return bytes;
}

std::string LossRecord(std::int64_t tenThousandths) {
  std::string record(128, '\xEE');
  for (std::size_t i = 0; i < 8; ++i) {
    record[i] = static_cast<char>(static_cast<std::uint64_t>(tenThousandths) >> (8 * i) & 0xFF);
  }
  return record;
}

std::string LossFile() {
  return LossRecord(-6000) + LossRecord(-7000) + LossRecord(-8000) + LossRecord(-9000) + LossRecord(300);
}

struct StartUpTest : testing::Test, ConsoleRig {
  StartUpTest() {
    files.content["/system/TI532.epm"] = ParameterFile();
    files.content["/system/RampTable.dat"] = RampFile("8");
    files.content["/system/Cable.loss"] = LossFile();
  }
  void ExpectNothingBehindTheFiles() {
    EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 0);
    EXPECT_THAT(downLoad.lstDataReadWindow.Items(), IsEmpty());
    EXPECT_EQ(state.ramp.RampStorageMode, "");
    EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "");
    EXPECT_THAT(bus.Opened(), IsEmpty());
    EXPECT_EQ(state.testSet.TestSetKind, "");
  }
};

TEST_F(StartUpTest, BringsTheMainPanelToItsFirstState) {
  state.reply.TargetMode = "";
  state.testSet.TestSetReady = true;
  Start();
  EXPECT_EQ(state.reply.TargetMode, "TestMode");
  EXPECT_EQ(main.Caption(), "T9300 ORVANE 8_6_4D    English Version (030410)");
  EXPECT_EQ(main.txtResults.ForeColor(), 0xFF0000U);
  EXPECT_EQ(main.txtResults.Text(), "");
  EXPECT_TRUE(state.console.LogOffState);
  EXPECT_EQ(state.console.LogFileNumber, 0);
  EXPECT_FALSE(state.testSet.TestSetReady);
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_EQ(main.updAPCLoss.Value(), -5);
  EXPECT_EQ(main.txtAPCLoss.Text(), "-0.5");
  EXPECT_EQ(main.SSTab1.Tabs()[static_cast<std::size_t>(main.SSTab1.Selected())], "SYSTEM");
  EXPECT_TRUE(main.Visible());
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(StartUpTest, FillsRecordTablesAndPanelsFromTheInstalledFiles) {
  Start();
  EXPECT_EQ(state.rf.RFParams.rf_revision, 0x2030);
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_EQ(state.rf.RFParamText[1856], "0");

  EXPECT_EQ(state.ramp.RampTable[30][31], "8");
  EXPECT_EQ(main.ramp.txtUP[15]->Text(), "8");
  EXPECT_EQ(main.ramp.txtDN[0]->Text(), "8");
  EXPECT_EQ(state.ramp.RampStorageMode, "File");

  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
  EXPECT_EQ(autoCal.txtRxCableLossDCS.Text(), "-0.7");
  EXPECT_EQ(autoCal.txtLoss.Text(), "-0.8");
  EXPECT_EQ(autoCal.txtDCSLoss.Text(), "-0.9");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "0.03");
  // The main panel's box is copied on.
  EXPECT_EQ(baseBand.txtVoltageLoss.Text(), "0.03");
  EXPECT_EQ(state.cal.LossTable[4].Text(), "0.03");
}

TEST_F(StartUpTest, ListsOneLineForEachDataLineRead) {
  files.content["/system/TI532.epm"] = "a = RF_SL2\r\n\r\n/ c = 9\r\nb = 17\r\nno value\r\n";
  Start();
  EXPECT_THAT(downLoad.lstDataReadWindow.Items(), ElementsAre("Address\tData", "0\tRF_SL2", "1\t17", "2\t"));
}

TEST_F(StartUpTest, ListsNoMoreLinesThanThereArePositions) {
  std::string text;
  for (int i = 0; i < 2705; ++i) text += "a = 1\n";
  files.content["/system/TI532.epm"] = text;
  Start();
  EXPECT_EQ(downLoad.lstDataReadWindow.Items().size(), 1U + 2701U);
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
}

TEST_F(StartUpTest, ACommentMarkAnywhereDropsTheLineAndALineWithoutAValueKeepsItsPlace) {
  state.rf.RFParamText[1] = "old";
  files.content["/system/TI532.epm"] = "a = RF_SL2\nlow_agc_noise_thr=5\nb = 6 / seven\nc\t=\t8\n";
  Start();
  EXPECT_EQ(state.rf.RFParamText[0], "RF_SL2");
  EXPECT_EQ(state.rf.RFParamText[1], "old");
  EXPECT_EQ(state.rf.RFParamText[2], "8");
  EXPECT_EQ(state.rf.RFParamCount, 3);
}

TEST_F(StartUpTest, RampSumsShowGreenForASumOf128) {
  Start();
  EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "128");
  EXPECT_EQ(main.ramp.txtRampDownStatus.Text(), "128");
  EXPECT_EQ(main.ramp.txtRampUpStatus.BackColor(), 0x00FF00U);
  EXPECT_EQ(main.ramp.txtRampDownStatus.BackColor(), 0x00FF00U);
}

TEST_F(StartUpTest, OneSumOf128PaintsBothBoxesGreenAndNoneBothRed) {
  std::string& table = files.content["/system/RampTable.dat"];
  table.replace(0, 128, RampRecord("9"));
  Start();
  EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "129");
  EXPECT_EQ(main.ramp.txtRampUpStatus.BackColor(), 0x00FF00U);

  ConsoleRig other;
  table.replace(std::size_t{16} * 128, 128, RampRecord("9"));
  other.files.content = files.content;
  other.Start();
  EXPECT_EQ(other.main.ramp.txtRampDownStatus.Text(), "129");
  EXPECT_EQ(other.main.ramp.txtRampUpStatus.BackColor(), 0x0000FFU);
  EXPECT_EQ(other.main.ramp.txtRampDownStatus.BackColor(), 0x0000FFU);
}

TEST_F(StartUpTest, AFileInBothPlacesIsTakenFromTheFirst) {
  files.content["/temp/TI532.epm"] = "a = RF_SL2\nb = 30\n";
  files.content["/temp/RampTable.dat"] = RampFile("4");
  files.content["/temp/Cable.loss"] = LossRecord(-10000);
  Start();
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_EQ(state.ramp.RampTable[0][0], "8");
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
}

TEST_F(StartUpTest, AFileInTheSecondPlaceOnlyIsTakenFromThere) {
  for (const char* name : {"TI532.epm", "RampTable.dat", "Cable.loss"}) {
    auto node = files.content.extract("/system/" + std::string(name));
    node.key() = "/temp/" + std::string(name);
    files.content.insert(std::move(node));
  }
  Start();
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_EQ(state.ramp.RampTable[0][0], "8");
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(StartUpTest, AMissingParameterFileCostsTwoBoxesAndAllThatFollows) {
  files.content.erase("/system/TI532.epm");
  Start();
  ASSERT_EQ(boxes.shown.size(), 2U);
  ExpectBox(boxes.shown[0], "There is not TI532.epm in Windows\\System directory.", "Alarm", BoxIcon::Information);
  ExpectBox(boxes.shown[1], "/temp/TI532.epm: No such file or directory", "ORVANE", BoxIcon::Exclamation);
  EXPECT_EQ(state.ramp.RampTable[0][0], "");
  EXPECT_EQ(main.ramp.txtUP[0]->Text(), "");
  EXPECT_FALSE(autoCal.Created());
  ExpectNothingBehindTheFiles();
  EXPECT_TRUE(main.Visible());
  EXPECT_FALSE(files.Exists("/temp/TI532.epm"));
}

TEST_F(StartUpTest, AMissingRampTableCostsTwoBoxesAndAllThatFollows) {
  files.content.erase("/system/RampTable.dat");
  Start();
  ASSERT_EQ(boxes.shown.size(), 2U);
  ExpectBox(boxes.shown[0], "There is not RampTable.dat in Windows\\System directory.", "Caution",
            BoxIcon::Information);
  ExpectBox(boxes.shown[1], "/temp/RampTable.dat: No such file or directory", "ORVANE", BoxIcon::Exclamation);
  EXPECT_EQ(state.rf.RFParamText[0], "RF_PASCAL_20");
  EXPECT_EQ(main.ramp.txtUP[0]->Text(), "");
  EXPECT_FALSE(autoCal.Created());
  ExpectNothingBehindTheFiles();
}

TEST_F(StartUpTest, AMissingLossFileCostsTwoBoxesAndAllThatFollows) {
  files.content.erase("/system/Cable.loss");
  Start();
  ASSERT_EQ(boxes.shown.size(), 2U);
  ExpectBox(boxes.shown[0], "There is not Cable.loss in Windows\\System directory.", "Caution", BoxIcon::Information);
  ExpectBox(boxes.shown[1], "/temp/Cable.loss: No such file or directory", "ORVANE", BoxIcon::Exclamation);
  EXPECT_EQ(state.ramp.RampTable[0][0], "8");
  EXPECT_EQ(main.ramp.txtUP[0]->Text(), "8");
  EXPECT_FALSE(autoCal.Created());
  ExpectNothingBehindTheFiles();
}

TEST_F(StartUpTest, AFileThatIsThereButDoesNotOpenIsOneBoxAndTheSecondPlaceIsNotTried) {
  files.content["/temp/TI532.epm"] = ParameterFile();
  files.unopenable.insert("/system/TI532.epm");
  Start();
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "/system/TI532.epm: Permission denied", "ORVANE", BoxIcon::Exclamation);
  EXPECT_EQ(state.rf.RFParamText[0], "");
}

TEST_F(StartUpTest, ABadValueStopsTheRecordThereAndNothingElse) {
  files.content["/system/TI532.epm"] = "a = RF_SL2\nb = 7\nc = x\nd = 9\n";
  Start();
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 7);
  EXPECT_EQ(state.rf.RFParams.low_agc, 0);
  EXPECT_EQ(downLoad.lstDataReadWindow.Items().size(), 5U);
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(StartUpTest, AShortRampFileLeavesTheOtherValuesAndShowsNoSum) {
  files.content["/system/RampTable.dat"] = RampRecord("5");
  Start();
  EXPECT_EQ(main.ramp.txtUP[0]->Text(), "5");
  EXPECT_EQ(main.ramp.txtUP[1]->Text(), "");
  EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "");
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(StartUpTest, AShortLossFileNeverShowsALossOfZero) {
  files.content["/system/Cable.loss"] = LossRecord(-6000);
  Start();
  EXPECT_EQ(autoCal.txtDCSLoss.Text(), "-0.5");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "0.01");
  EXPECT_EQ(state.cal.LossTable[0].Text(), "-0.6");
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_TRUE(autoCal.Created());
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(StartUpTest, TheFilesRampIndexesWinOverThoseOfTheCalibrationPanel) {
  autoCal.onLoad = [this] { state.rf.RFParams.BAND[0].tx_Level[0].ramp_index = 99; };
  Start();
  // Position 424 of the file.
  EXPECT_EQ(state.rf.RFParams.BAND[0].tx_Level[0].ramp_index, 424 % 32);
}

TEST_F(StartUpTest, TheCalibrationPanelIsCreatedEvenWhenNoLossDiffers) {
  files.content["/system/Cable.loss"] =
      LossRecord(-5000) + LossRecord(-5000) + LossRecord(-5000) + LossRecord(-5000) + LossRecord(100);
  Start();
  EXPECT_TRUE(autoCal.Created());
  EXPECT_FALSE(baseBand.Created());
}

TEST_F(StartUpTest, GreetsTheTestSetAndLetsItGo) {
  Start();
  EXPECT_THAT(bus.Opened(), ElementsAre(GpibAddress{0, 1, 0}));
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
  EXPECT_EQ(CWGPIB1.RepliesRead(), 1);
  EXPECT_EQ(Instrument().locals, 1);
  EXPECT_FALSE(CWGPIB1.HasSession());
  EXPECT_EQ(CWGPIB1.timeOutCode, 13);
  EXPECT_EQ(state.testSet.TestSetKind, "HP8960");
  EXPECT_FALSE(state.testSet.TestSetReady);
  EXPECT_EQ(main.shpInstrumentOnOff.BackColor(), 0x8000000FU);
  EXPECT_EQ(loop.Now(), TimePoint{11 * 20000 * 2});
}

TEST_F(StartUpTest, OnlyTwoTimeOutsAreAppliedToTheGreeting) {
  const struct {
    std::size_t entry;
    Integer code;
  } cases[] = {{0, 0}, {13, 13}, {11, 7}};  // "None", "10s", "1s"
  for (const auto& [entry, code] : cases) {
    ConsoleRig rig;
    rig.files.content = files.content;
    rig.CWGPIB1.timeOutCode = 7;
    rig.main.cboTimeOut.Pick(entry);
    rig.Start();
    EXPECT_EQ(rig.CWGPIB1.timeOutCode, code) << entry;
  }
}

TEST_F(StartUpTest, AnotherKindOfTestSetIsGreetedWithoutTheAnalyserLine) {
  main.cboInstrumentList.Pick(0);
  Start();
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "*RST"));
}

TEST_F(StartUpTest, AnAbsentTestSetPassesSilentlyAndAtOnce) {
  Instrument().absent = true;
  Start();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_LT(loop.Now(), TimePoint{1ms});
  EXPECT_FALSE(CWGPIB1.HasSession());
  EXPECT_FALSE(state.testSet.TestSetReady);
}

TEST_F(StartUpTest, NoReplyIsAwaitedFromATestSetThatTookNoQuery) {
  Instrument().absent = true;
  Instrument().silent = true;
  Start();
  EXPECT_LT(loop.Now(), TimePoint{1ms});
}

TEST_F(StartUpTest, ASilentTestSetCostsOneTimeOutAndTheOtherLinesGoOut) {
  Instrument().silent = true;
  Start();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
  EXPECT_GE(loop.Now(), TimePoint{10s});
  EXPECT_LT(loop.Now(), TimePoint{11s});
}

TEST_F(StartUpTest, ABadPaceCountIsPassedOver) {
  main.txtSyncDelay.SetText("");
  Start();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
}

}  // namespace
}  // namespace orvane::test
