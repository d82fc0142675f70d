#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/numbers.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using testing::IsEmpty;

/// An operator has stopped the run: nobody let the Target go, and the tabs "RX" and "TX" are his.
struct ByHand : testing::Test, VirtualStation {
  ByHand() {
    InitializeInstruments();
    loop.PostAt(loop.Now() + std::chrono::milliseconds(300), [this] { op.Click(Panels().autoCal.cmdAutoCalStop); });
    InitializeTarget();
    op.Click(Panels().autoCal.cmdAutoCalStop);
    journal.Clear();
  }

  double MeasuredAt(const std::string& levelDbm) {
    op.Type(main.txtAGCPowerLevel, levelDbm);
    op.Click(main.cmdAGCPowerLevelSet);
    op.Click(main.cmdPMStart);
    return ToDouble(main.txtAGCPM.Text());
  }
  [[nodiscard]] const std::optional<bench::Burst>& OnAir() const { return bench.Models().Joined().uplink; }

  OrvaneMain& main = Panels().main;
};

TEST_F(ByHand, TheTargetIsStillThereAfterAStoppedRun) {
  EXPECT_TRUE(bench.Serial().PortOpen());
  EXPECT_EQ(Concluded(), Verdict::None);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ByHand, NoCommandOfTheTwoTabsIsLeftWithoutAReply) {
  for (Button* button :
       {&main.cmdBeaconSet, &main.cmdServingSet, &main.cmdAGCValue, &main.cmdAFCValueSet, &main.cmdFBTest,
        &main.cmdPMStart, &main.Command4, &main.cmdPowerlevelSet, &main.cmdULTest, &main.cmdULTest}) {
    EXPECT_EQ(op.Click(*button), std::nullopt) << button->Name();
    EXPECT_EQ(State().reply.TMStatus, "&H00") << button->Name();
  }
  op.Pick(main.cboFBMode, 1);
  op.Click(main.cmdFBTest);
  op.Select(main.optTxLevelDCS);
  EXPECT_EQ(State().tally.silentWaits, 0);
  EXPECT_EQ(State().tally.refusedLines, 0);
  EXPECT_EQ(journal.Commands().size(), 2 + 2 + 2 + 1 + 6 + 9 + 3 + 2 + 1 + 2 + 6 + 1U);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ByHand, AStrongerCellMeasuresStronger) {
  // The preset behind every run leaves the test set's cell on channel 20.
  op.Type(main.txtBeacon, "20");
  op.Click(main.cmdBeaconSet);
  op.Click(main.cmdAGCValue);
  const double weak = MeasuredAt("-80");
  const double strong = MeasuredAt("-70");
  EXPECT_NEAR(strong - weak, 10, 0.5);

  op.Type(main.txtAGCValue, "30");
  op.Click(main.cmdAGCValue);
  EXPECT_NEAR(MeasuredAt("-70") - strong, 30 - 40, 0.5) << "as much less as the receiver amplifies less";
}

TEST_F(ByHand, ABurstIsOnTheAirBetweenItsTwoClicks) {
  op.Type(main.txtServing, "62");
  op.Click(main.Command4);
  EXPECT_FALSE(OnAir());
  op.Click(main.cmdULTest);
  ASSERT_TRUE(OnAir());
  EXPECT_EQ(OnAir()->arfcn, 62);
  const double loud = OnAir()->powerDbm;
  op.Type(main.txtPowerLevel, "100");
  op.Click(main.cmdPowerlevelSet);
  EXPECT_LT(OnAir()->powerDbm, loud - 10);
  EXPECT_EQ(main.txtPowerLevel.Text(), "100");
  op.Click(main.cmdULTest);
  EXPECT_FALSE(OnAir());
}

TEST_F(ByHand, CharactersOfTheEepromEntryAreNoCommandAndDisturbNone) {
  FrmDownLoad& downLoad = Panels().downLoad;
  op.Select(downLoad.optEepromWrite);
  const long asked = State().tally.commands;
  for (const char32_t key : {U'0', U'x', U'7', U'F', U'\r'}) op.Key(downLoad.txtEepromDataWrite, key);
  EXPECT_EQ(downLoad.lstDataReadWindow.Items().back(), "0\t0\t0x7F");
  EXPECT_EQ(State().tally.commands, asked);
  op.Click(main.cmdBeaconSet);
  EXPECT_EQ(State().reply.TMStatus, "&H00");
  EXPECT_EQ(State().tally.silentWaits, 0);
  EXPECT_EQ(State().tally.strayReplies, 0);
}

TEST_F(ByHand, ADacValueThatTheTargetHasNotIsItsFailureAndNoReadBack) {
  op.Type(main.txtPowerLevel, "1024");
  op.Click(main.cmdPowerlevelSet);
  EXPECT_EQ(State().reply.TMStatus, "&H02");
  EXPECT_EQ(journal.Commands(), std::vector<std::string>{"txpw 4 1024"});
  EXPECT_TRUE(State().cal.CalFailed) << "a failure status counts, run or none";
}

}  // namespace
}  // namespace orvane::test
