#include "console/installed_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "start_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct InstalledDataTest : testing::Test, StartRig {
  void ExpectNothingBehindTheFiles() {
    EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 0);
    EXPECT_THAT(downLoad.lstDataReadWindow.Items(), IsEmpty());
    EXPECT_EQ(state.ramp.RampStorageMode, "");
    EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "");
    EXPECT_THAT(bus.Opened(), IsEmpty());
    EXPECT_EQ(state.testSet.TestSetKind, "");
  }
};

TEST_F(InstalledDataTest, FillsRecordTablesAndPanelsFromTheInstalledFiles) {
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

TEST_F(InstalledDataTest, ListsOneLineForEachDataLineRead) {
  files.content["/system/TI532.epm"] = "a = RF_SL2\r\n\r\n/ c = 9\r\nb = 17\r\nno value\r\n";
  Start();
  EXPECT_THAT(downLoad.lstDataReadWindow.Items(), ElementsAre("Address\tData", "0\tRF_SL2", "1\t17", "2\t"));
}

TEST_F(InstalledDataTest, ListsNoMoreLinesThanThereArePositions) {
  std::string text;
  for (int i = 0; i < 2705; ++i) text += "a = 1\n";
  files.content["/system/TI532.epm"] = text;
  Start();
  EXPECT_EQ(downLoad.lstDataReadWindow.Items().size(), 1U + 2701U);
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
}

TEST_F(InstalledDataTest, ACommentMarkAnywhereDropsTheLineAndALineWithoutAValueKeepsItsPlace) {
  state.rf.RFParamText[1] = "old";
  files.content["/system/TI532.epm"] = "a = RF_SL2\nlow_agc_noise_thr=5\nb = 6 / seven\nc\t=\t8\n";
  Start();
  EXPECT_EQ(state.rf.RFParamText[0], "RF_SL2");
  EXPECT_EQ(state.rf.RFParamText[1], "old");
  EXPECT_EQ(state.rf.RFParamText[2], "8");
  EXPECT_EQ(state.rf.RFParamCount, 3);
}

TEST_F(InstalledDataTest, RampSumsShowGreenForASumOf128) {
  Start();
  EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "128");
  EXPECT_EQ(main.ramp.txtRampDownStatus.Text(), "128");
  EXPECT_EQ(main.ramp.txtRampUpStatus.BackColor(), 0x00FF00U);
  EXPECT_EQ(main.ramp.txtRampDownStatus.BackColor(), 0x00FF00U);
}

TEST_F(InstalledDataTest, OneSumOf128PaintsBothBoxesGreenAndNoneBothRed) {
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

TEST_F(InstalledDataTest, AFileInBothPlacesIsTakenFromTheFirst) {
  files.content["/temp/TI532.epm"] = "a = RF_SL2\nb = 30\n";
  files.content["/temp/RampTable.dat"] = RampFile("4");
  files.content["/temp/Cable.loss"] = LossRecord(-10000);
  Start();
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_EQ(state.ramp.RampTable[0][0], "8");
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
}

TEST_F(InstalledDataTest, AFileInTheSecondPlaceOnlyIsTakenFromThere) {
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

TEST_F(InstalledDataTest, AMissingParameterFileCostsTwoBoxesAndAllThatFollows) {
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

TEST_F(InstalledDataTest, AMissingRampTableCostsTwoBoxesAndAllThatFollows) {
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

TEST_F(InstalledDataTest, AMissingLossFileCostsTwoBoxesAndAllThatFollows) {
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

TEST_F(InstalledDataTest, AFileThatIsThereButDoesNotOpenIsOneBoxAndTheSecondPlaceIsNotTried) {
  files.content["/temp/TI532.epm"] = ParameterFile();
  files.unopenable.insert("/system/TI532.epm");
  Start();
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "/system/TI532.epm: Permission denied", "ORVANE", BoxIcon::Exclamation);
  EXPECT_EQ(state.rf.RFParamText[0], "");
}

TEST_F(InstalledDataTest, ABadValueStopsTheRecordThereAndNothingElse) {
  files.content["/system/TI532.epm"] = "a = RF_SL2\nb = 7\nc = x\nd = 9\n";
  Start();
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 7);
  EXPECT_EQ(state.rf.RFParams.low_agc, 0);
  EXPECT_EQ(downLoad.lstDataReadWindow.Items().size(), 5U);
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_THAT(Instrument().lines, ElementsAre("*IDN?", "RFAN:CONT:AUTO OFF", "*RST"));
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(InstalledDataTest, AShortRampFileLeavesTheOtherValuesAndShowsNoSum) {
  files.content["/system/RampTable.dat"] = RampRecord("5");
  Start();
  EXPECT_EQ(main.ramp.txtUP[0]->Text(), "5");
  EXPECT_EQ(main.ramp.txtUP[1]->Text(), "");
  EXPECT_EQ(main.ramp.txtRampUpStatus.Text(), "");
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(InstalledDataTest, AShortLossFileShowsTheLossesThatItHasAndNeverOneOfZero) {
  // The third record is cut within its value.
  files.content["/system/Cable.loss"] = LossRecord(-6000) + LossRecord(-7000) + LossRecord(-8000).substr(0, 7);
  Start();
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
  EXPECT_EQ(autoCal.txtRxCableLossDCS.Text(), "-0.7");
  EXPECT_EQ(autoCal.txtLoss.Text(), "-0.5");
  EXPECT_EQ(autoCal.txtDCSLoss.Text(), "-0.5");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "0.01");
  EXPECT_EQ(state.cal.LossTable[1].Text(), "-0.7");
  EXPECT_EQ(state.cal.LossTable[2].Text(), "0");
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_TRUE(autoCal.Created());
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(InstalledDataTest, SoundFilesHaveNoDamage) {
  Start();
  EXPECT_EQ(state.rf.damage, "");
  EXPECT_EQ(state.ramp.damage, "");
  EXPECT_EQ(state.cal.lossDamage, "");
}

TEST_F(InstalledDataTest, DamageIsKeptForTheRunsThatStandOnTheFile) {
  struct Row {
    std::string name;
    std::string content;
    std::string damage;
  };
  const std::string losses = files.content["/system/Cable.loss"];
  const std::string ramps = files.content["/system/RampTable.dat"];
  const std::string parameters = files.content["/system/TI532.epm"];
  const Row rows[] = {
      {"Cable.loss", "", "is 0 bytes long, not 640."},
      {"Cable.loss", std::string(640, '\0'), "holds nothing but zero bytes."},
      {"Cable.loss", losses.substr(0, 320), "is 320 bytes long, not 640."},
      {"Cable.loss", losses + "x", "is 641 bytes long, not 640."},
      {"RampTable.dat", ramps.substr(0, 5000), "is 5000 bytes long, not 126976."},
      {"RampTable.dat", std::string(126976, '\0'), "holds nothing but zero bytes."},
      {"TI532.epm", "", "holds 0 values, not 1857."},
      {"TI532.epm", std::string(60000, '\0'), "holds 1 values, not 1857."},
      {"TI532.epm", parameters + "one = 1\r\n", "holds 1858 values, not 1857."},
  };
  for (const Row& row : rows) {
    ConsoleRig rig;
    rig.files.content = files.content;
    rig.files.content["/system/" + row.name] = row.content;
    rig.Start();
    EXPECT_THAT(rig.boxes.shown, IsEmpty());
    EXPECT_EQ(rig.state.rf.damage + rig.state.ramp.damage + rig.state.cal.lossDamage,
              "/system/" + row.name + " " + row.damage);
  }
}

TEST_F(InstalledDataTest, AFileThatOpensAndCannotBeReadIsDamaged) {
  files.unreadable = {"/system/TI532.epm", "/system/RampTable.dat", "/system/Cable.loss"};
  Start();
  EXPECT_EQ(state.rf.damage, "/system/TI532.epm cannot be read: /system/TI532.epm: Input/output error.");
  EXPECT_EQ(state.ramp.damage, "/system/RampTable.dat cannot be read: /system/RampTable.dat: Input/output error.");
  EXPECT_EQ(state.cal.lossDamage, "/system/Cable.loss cannot be read: /system/Cable.loss: Input/output error.");
}

TEST_F(InstalledDataTest, AFileBeyondItsBoundDoesNotOpen) {
  files.content["/system/TI532.epm"].resize((4 << 20) + 1);
  Start();
  ASSERT_EQ(boxes.shown.size(), 1U);
  ExpectBox(boxes.shown[0], "/system/TI532.epm: File too large", "ORVANE", BoxIcon::Exclamation);
  ExpectNothingBehindTheFiles();
}

TEST_F(InstalledDataTest, TheFilesRampIndexesWinOverThoseOfTheCalibrationPanel) {
  autoCal.onLoad = [this] { state.rf.RFParams.BAND[0].tx_Level[0].ramp_index = 99; };
  Start();
  // Position 424 of the file.
  EXPECT_EQ(state.rf.RFParams.BAND[0].tx_Level[0].ramp_index, 424 % 32);
}

TEST_F(InstalledDataTest, ACalibrationPanelThatFailsToLoadCostsNothingElse) {
  autoCal.onLoad = [] { throw StationFailure("no load"); };
  Start();
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.6");
  EXPECT_EQ(state.rf.RFParams.low_agc_noise_thr, 1);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(InstalledDataTest, TheCalibrationPanelIsCreatedEvenWhenNoLossDiffers) {
  files.content["/system/Cable.loss"] =
      LossRecord(-5000) + LossRecord(-5000) + LossRecord(-5000) + LossRecord(-5000) + LossRecord(100);
  Start();
  EXPECT_TRUE(autoCal.Created());
  EXPECT_FALSE(baseBand.Created());
}

}  // namespace
}  // namespace orvane::test
