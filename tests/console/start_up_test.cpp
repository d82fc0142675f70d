#include "console/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "start_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

struct StartUpTest : testing::Test, StartRig {};

TEST_F(StartUpTest, BringsTheMainPanelToItsFirstState) {
  state.reply.TargetMode = "";
  state.console.LogOffState = false;
  state.console.LogFileNumber = 1;
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
