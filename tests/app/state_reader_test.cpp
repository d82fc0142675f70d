#include "app/automation/state_reader.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

class StateReader : public testing::Test {
 protected:
  Json Value(std::string_view name) { return ReadState(state_, name).value_or("no such name"); }
  StationState state_;
};

TEST_F(StateReader, GivesEachValueInItsOwnForm) {
  state_.reply.TMStatus = "&H05";
  state_.reply.ReplyBytes[3] = "&H02";
  state_.reply.ReplyBuffer = "\x02\x14\xFF";
  state_.reply.RawAdcValue = 624;
  state_.console.SerialInBuffer = 1024;
  state_.testSet.TestSetKind = "HP8960";
  state_.ramp.RampTable[30][31] = "7";
  state_.cal.CalFailed = true;
  state_.cal.PowerIndex[0] = "32.5"_d4;
  state_.cal.PowerIndex[1] = 7;
  state_.pattern.APCDACPatternTable[2][30] = "50";
  state_.charger.PSReady = true;
  state_.reply.FrameData[100] = 255;
  state_.niGlobal = {0xC000, 6};
  EXPECT_EQ(Value("ReplyDone"), true);
  EXPECT_EQ(Value("TMStatus"), "&H05");
  EXPECT_EQ(Value("ReplyBytes").size(), 201U);
  EXPECT_EQ(Value("ReplyBytes")[3], "&H02");
  EXPECT_EQ(Value("ReplyBuffer"), "\x02\x14\u00FF");
  EXPECT_EQ(Value("RawAdcValue"), 624);
  EXPECT_EQ(Value("SerialInBuffer"), 1024);
  EXPECT_EQ(Value("TestSetKind"), "HP8960");
  EXPECT_EQ(Value("RampTable").size(), 31U);
  EXPECT_EQ(Value("RampTable")[30][31], "7");
  EXPECT_EQ(Value("CalFailed"), true);
  EXPECT_EQ(Value("PowerIndex")[0], 32.5);
  EXPECT_EQ(Value("PowerIndex")[1], 7);
  EXPECT_EQ(Value("APCDACPatternTable").size(), 3U);
  EXPECT_EQ(Value("APCDACPatternTable")[2][30], "50");
  EXPECT_EQ(Value("PSReady"), true);
  EXPECT_EQ(Value("FrameData").size(), 101U);
  EXPECT_EQ(Value("FrameData")[100], 255);
  EXPECT_EQ(Value("ibsta"), 0xC000);
  EXPECT_EQ(Value("iberr"), 6);
}

TEST_F(StateReader, GivesTheRecordAsLabelsInTheOrderOfAParameterFile) {
  state_.rf.RFParams.rf_revision = 0x2031;
  state_.rf.RFParams.BAND[1].tx_Level[5].ramp_index = 9;
  state_.rf.RFParams.psi_st = 123456;
  const Json record = Value("RFParams");
  ASSERT_EQ(record.size(), 1857U);
  EXPECT_EQ(record.begin().key(), "rf_revision");
  EXPECT_EQ(record["rf_revision"], 0x2031);
  EXPECT_EQ(record["BAND(1).tx_Level(0).ramp_index(5)"], 9);
  EXPECT_EQ(record["psi_st"], 123456);
}

TEST_F(StateReader, KnowsNoOtherNames) {
  for (const char* name : {"", "tmstatus", "TMStatus ", "frmAutoCal", "powerError", "commands"}) {
    EXPECT_FALSE(ReadState(state_, name).has_value()) << name;
  }
}

}  // namespace
}  // namespace orvane
