#include "txcal/side_tables.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "support/memory_files.h"

namespace orvane::test {
namespace {

using namespace std::string_literals;

TEST(SideTables, StartWithTheStationsOwnTargetsAndFirstValues) {
  CalState state;
  state.PowerIndex[31] = "1.5"_d4;
  FillDefaultSideTables(state);
  const std::array<Integer, 31> power{32, 31, 29, 27, 25, 23, 21, 19, 17, 15, 13, 11, 9, 8, 7, 29,
                                      28, 26, 24, 22, 20, 18, 16, 14, 12, 10, 8,  6,  5, 4, 3};
  const std::array<Integer, 31> first{600, 550, 430, 350, 284, 222, 176, 140, 115, 95, 80, 67, 56, 51, 48, 720,
                                      630, 500, 400, 330, 258, 205, 162, 130, 105, 90, 75, 63, 57, 52, 48};
  for (std::size_t i = 0; i < power.size(); ++i) EXPECT_EQ(state.PowerIndex[i], Decimal4(power[i])) << i;
  EXPECT_EQ(state.InitValueIndex, first);
  EXPECT_EQ(state.PowerIndex[31], "1.5"_d4) << "the position behind the last level is not filled";
}

TEST(SideTables, PositionsRunFromGsmLevel5ToDcsLevel15) {
  EXPECT_EQ(kGsmLevels.PositionOf(5), 0);
  EXPECT_EQ(kGsmLevels.PositionOf(19), 14);
  EXPECT_EQ(kDcsLevels.PositionOf(0), 15);
  EXPECT_EQ(kDcsLevels.PositionOf(15), 30);
}

class SideTableFiles : public ::testing::Test {
 protected:
  std::string& Content() { return files.content["a"]; }
  std::unique_ptr<File> Reading() { return files.OpenForReading("a", kLargestRecordFile); }

  MemoryFiles files;
  CalState state;
};

TEST_F(SideTableFiles, APowerOf32DbmIsTheNumber320000) {
  FillDefaultSideTables(state);
  state.PowerIndex[1] = "-0.5"_d4;
  Content() = PowerRecords(state);
  EXPECT_EQ(Content().size(), 31U * 128);
  EXPECT_EQ(Content().substr(0, 8), "\x00\xE2\x04\x00\x00\x00\x00\x00"s);
  EXPECT_EQ(Content().substr(128, 8), "\x78\xEC\xFF\xFF\xFF\xFF\xFF\xFF"s);
  CalState loaded;
  ReadPowerRecords(*Reading(), loaded);
  EXPECT_EQ(loaded.PowerIndex, state.PowerIndex);
}

TEST_F(SideTableFiles, AFirstValueOf600IsTwoBytes) {
  FillDefaultSideTables(state);
  state.InitValueIndex[1] = -2;
  Content() = InitialRecords(state);
  EXPECT_EQ(Content().size(), 31U * 128);
  EXPECT_EQ(Content().substr(0, 3), "\x58\x02\x00"s);
  EXPECT_EQ(Content().substr(128, 3), "\xFE\xFF\x00"s);
  CalState loaded;
  ReadInitialRecords(*Reading(), loaded);
  EXPECT_EQ(loaded.InitValueIndex, state.InitValueIndex);
}

TEST_F(SideTableFiles, TheLossFileHoldsFiveValuesAndItsFillerIsIgnored) {
  state.LossTable[4] = "0.01"_d4;
  state.LossTable[5] = 7;
  Content() = LossRecords(state);
  EXPECT_EQ(Content().size(), 5U * 128);
  EXPECT_EQ(Content().substr(4 * 128, 8), "\x64\x00\x00\x00\x00\x00\x00\x00"s);
  Content().replace(8, 120, std::string(120, '\xAA'));
  CalState loaded;
  ReadLossRecords(*Reading(), loaded);
  EXPECT_EQ(loaded.LossTable[0], Decimal4());
  EXPECT_EQ(loaded.LossTable[4], "0.01"_d4);
  EXPECT_EQ(loaded.LossTable[5], Decimal4());
}

TEST_F(SideTableFiles, AShortFileFailsAndKeepsWhatWasRead) {
  for (std::size_t i = 0; i < 5; ++i) state.LossTable[i] = "-1.5"_d4;
  Content() = LossRecords(state);
  Content().resize(2 * 128 + 7);  // The third value lacks its last byte.
  CalState loaded;
  for (std::size_t i = 0; i < 5; ++i) loaded.LossTable[i] = 9;
  EXPECT_THROW(ReadLossRecords(*Reading(), loaded), StationFailure);
  EXPECT_EQ(loaded.LossTable[1], "-1.5"_d4);
  EXPECT_EQ(loaded.LossTable[2], Decimal4(9));
}

TEST_F(SideTableFiles, CompanionsHaveALineAPosition) {
  FillDefaultSideTables(state);
  state.PowerIndex[30] = "3.25"_d4;
  const std::string initial = InitialSideText(state);
  EXPECT_EQ(initial.substr(0, 46), "InitValueIndex(0)\t600\r\nInitValueIndex(1)\t550\r\n");
  EXPECT_EQ(initial.substr(initial.find("InitValueIndex(30)")), "InitValueIndex(30)\t48\r\n");
  const std::string power = PowerSideText(state);
  EXPECT_EQ(power.substr(0, 34), "PowerIndex(0)\t32\r\nPowerIndex(1)\t31");
  EXPECT_EQ(power.substr(power.find("PowerIndex(30)")), "PowerIndex(30)\t3.25\r\n");
}

TEST(Losses, AreShownInTheirFiveBoxes) {
  CalState state;
  for (std::size_t i = 0; i < 5; ++i) state.LossTable[i] = Decimal4::FromRaw(-1000 * static_cast<int>(i + 1));
  FrmAutoCal autoCal;
  OrvaneMain main;
  ShowLosses(state, autoCal, main);
  EXPECT_TRUE(autoCal.Created());
  EXPECT_EQ(autoCal.txtRxCableLossGSM.Text(), "-0.1");
  EXPECT_EQ(autoCal.txtRxCableLossDCS.Text(), "-0.2");
  EXPECT_EQ(autoCal.txtLoss.Text(), "-0.3");
  EXPECT_EQ(autoCal.txtDCSLoss.Text(), "-0.4");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "-0.5");
}

}  // namespace
}  // namespace orvane::test
