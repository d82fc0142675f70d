#include "rx_rig.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

struct RxRunFailure : ::testing::Test {
  void ExpectFlags(bool set) {
    EXPECT_EQ(rig.state.cal.CalFailed, set);
    EXPECT_EQ(rig.state.cal.CalStopRequested, set);
  }
  RxRig rig;
};

TEST_F(RxRunFailure, AnotherModeGoesStraightToTheEnd) {
  rig.state.reply.TargetMode = "NormalMode";
  const StepRecord step = rig.Step();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Target: rfpw 8 1"));
  EXPECT_FALSE(step.complete);
}

TEST_F(RxRunFailure, AClosedPortEndsTheRun) {
  rig.serial.Close();
  const StepRecord step = rig.Step();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Target: rfpw 8 0", "box: Target must be initialized at first.",
                                               "box: Target should be Initialized."));
  EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
  EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Stop);
  ExpectFlags(false);
  EXPECT_FALSE(step.complete);
}

TEST_F(RxRunFailure, ATestSetThatIsNotReadyEndsTheRun) {
  rig.state.testSet.TestSetReady = false;
  const StepRecord step = rig.Step();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Target: rfpw 8 0", "Target: rxpw 1 40", "DownlinkParamSet",
                                               "box: Initialize Test Set at first."));
  ExpectFlags(false);
  EXPECT_FALSE(step.complete);
}

TEST_F(RxRunFailure, ASilentTargetEndsTheRunWithoutAWord) {
  rig.serial.answer = nullptr;
  const StepRecord step = rig.Step();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("Target: rfpw 8 0", "Target: rxpw 1 40"));
  ExpectFlags(false);
  EXPECT_THAT(step.reason, HasSubstr("rxpw 1 40"));
}

TEST_F(RxRunFailure, EachCheckedCommandThatFailsEndsTheRunThere) {
  // The place of the command among those of the whole run, counted from 0.
  const struct {
    std::size_t place;
    const char* command;
  } rows[] = {{1, "rxpw 1 40"}, {2, "rfpw 2 0"}, {3, "rfpw 1 0"}, {4, "rxpw 8 0"},   {5, "rfe 1"}, {6, "sr 1 2"},
              {7, "rfe 1"},     {8, "sr 1 2"},   {11, "rfe 1"},   {13, "rfpw 2 40"}, {18, "rfe 1"}};
  for (const auto& row : rows) {
    RxRig fresh;
    fresh.refuse = [&](const std::string&) { return fresh.journal.Commands().size() == row.place + 1; };
    const StepRecord step = fresh.Step();
    EXPECT_EQ(fresh.Commands().size(), row.place + 1) << row.place;
    EXPECT_EQ(fresh.Commands().back(), row.command) << row.place;
    EXPECT_THAT(fresh.boxes.Texts(), IsEmpty());
    EXPECT_TRUE(fresh.state.cal.CalFailed);
    EXPECT_THAT(step.reason, HasSubstr(row.command));
  }
}

TEST_F(RxRunFailure, TheReadingItselfIsNotCheckedButTheReportKnows) {
  // "rfe 1" and "sr 1 2" above the carrier, "sr 1 2" below it.
  for (const std::size_t place : {9U, 10U, 12U}) {
    RxRig fresh;
    fresh.refuse = [&](const std::string&) { return fresh.journal.Commands().size() == place + 1; };
    const StepRecord step = fresh.Step();
    EXPECT_EQ(fresh.Commands().back(), "rfpw 8 1") << place;
    EXPECT_FALSE(step.complete) << place;
  }
}

TEST_F(RxRunFailure, TheFirstAndTheLastCommandAreNotLookedAt) {
  rig.refuse = [](const std::string& line) { return line == "rfpw 8 0" || line == "rfpw 8 1"; };
  EXPECT_FALSE(rig.Run());
  EXPECT_EQ(rig.Commands().back(), "rfpw 8 1");
  EXPECT_EQ(rig.state.rf.RFParams.BAND[1].g_magic, 180);
}

TEST_F(RxRunFailure, ADownlinkSetUpThatFailsLetsTheRunGoOn) {
  rig.downlinkOk = false;
  const StepRecord step = rig.Step();
  EXPECT_EQ(rig.Commands().back(), "rfpw 8 1");
  EXPECT_FALSE(step.complete);
}

TEST_F(RxRunFailure, ATestSetWithoutCommandsIsToldInTheReport) {
  RxRig fresh("4400M(WaveTek)");
  EXPECT_FALSE(fresh.Step().complete);
}

TEST_F(RxRunFailure, NoReadingAtAll) {
  rig.reportKind = 1;
  const StepRecord step = rig.Step();
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre(" 1> Auto Cal is not Completed. Re-try."));
  ExpectFlags(true);
  EXPECT_EQ(rig.autoCal.cmdAutoCalStop.BackColor(), 255U);
  EXPECT_THAT(rig.Commands(), Not(Contains("rfpw 8 1")));
  EXPECT_FALSE(step.complete);
}

TEST_F(RxRunFailure, AReportWithoutAPowerRepeatsTheLastOneButTheReportKnows) {
  // The report above and the one below the carrier of channel 40.
  for (const std::size_t place : {18U, 20U}) {
    RxRig fresh;
    fresh.serial.answer = [&](const SentCommand& command) {
      fresh.reportKind = fresh.journal.Commands().size() == place ? 1 : 2;
      return fresh.Answer(command);
    };
    const StepRecord step = fresh.Step();
    EXPECT_EQ(fresh.Commands().at(place - 1), "sr 1 2");
    EXPECT_EQ(fresh.Commands().back(), "rfpw 8 1");
    EXPECT_EQ(fresh.state.rf.RFParams.BAND[0].g_magic, 180);
    EXPECT_EQ(step.reason, "Channel 40: the Target's report held no power.") << place;
  }
}

TEST_F(RxRunFailure, NoReadingBelowTheCarrierHasNoButtonToColour) {
  rig.serial.answer = [&](const SentCommand& command) {
    const auto commands = rig.journal.Commands();
    const std::string reply = rig.Answer(command);
    if (commands.size() != 13) return reply;  // the second "sr" of the first channel
    rig.state.reply.PowerMeasureTimes10.clear();
    rig.reportKind = 1;
    return rig.Answer(command);
  };
  EXPECT_TRUE(rig.Run());
  EXPECT_EQ(rig.boxes.shown.front().text, " Auto Cal is not Completed. Re-try.");
  ExpectFlags(true);
  EXPECT_NE(rig.autoCal.cmdAutoCalStop.BackColor(), 255U);
}

TEST_F(RxRunFailure, AReadingThatIsNoNumberStopsTheRun) {
  rig.reportKind = 1;
  rig.state.reply.PowerMeasureTimes10 = "n/a";
  EXPECT_TRUE(rig.Run());
}

TEST_F(RxRunFailure, AnEmptyChannelStopsTheRunBeforeItMeasures) {
  rig.face.txtDCSArfcn3.SetText("");
  EXPECT_TRUE(rig.Run());
  EXPECT_THAT(rig.Commands(), ElementsAre("rfpw 8 0", "rxpw 1 40"));
  EXPECT_THAT(rig.face.lstMPRxChannelCalResult.Items(), ElementsAre("Band\tCal"));
}

TEST_F(RxRunFailure, AGainOutsideItsLimitsFailsTheRun) {
  const struct {
    int dB;
    const char* halfDb;
    bool good;
  } rows[] = {{51, "170", false}, {52, "172", true}, {61, "190", true}, {62, "192", false}};
  for (const auto& row : rows) {
    RxRig fresh;
    fresh.level = static_cast<std::uint16_t>(row.dB * 64);
    fresh.state.rf.RFParams.BAND[0].g_magic = 5;
    const StepRecord step = fresh.Step();
    EXPECT_EQ(fresh.face.txtMPGMAGICGSM900F71.Text(), row.halfDb);
    EXPECT_EQ(fresh.state.cal.CalFailed, !row.good) << row.dB;
    EXPECT_EQ(step.complete, row.good);
    EXPECT_EQ(fresh.Commands().back() == "rfpw 8 1", row.good);
    if (row.good) continue;
    EXPECT_THAT(fresh.boxes.Texts(), ElementsAre(" GMagic is out of range. Re-try."));
    EXPECT_TRUE(fresh.state.cal.CalStopRequested);
    EXPECT_EQ(fresh.autoCal.cmdAutoCalStop.BackColor(), 255U);
    EXPECT_EQ(fresh.state.rf.RFParams.BAND[0].g_magic, 5);
    EXPECT_EQ(fresh.face.txtMPGMAGICDCS1800F71.Text(), "");
    EXPECT_FALSE(fresh.state.reply.ReplyDone);
  }
}

TEST_F(RxRunFailure, ABadDcsGainLeavesTheGsmOneStoredAndNoCompensation) {
  rig.Script({56, 56, 56, 56, 56, 56, 70, 56, 56, 56, 56, 56});
  rig.Run();
  EXPECT_EQ(rig.state.rf.RFParams.BAND[0].g_magic, 180);
  EXPECT_EQ(rig.state.rf.RFParams.BAND[1].g_magic, 0);
  EXPECT_EQ(rig.face.txtMPGMAGICDCS1800F80.Text(), "104");
  EXPECT_EQ(rig.state.rf.RFParams.BAND[0].agc_bands[1].upper_bound, 0);
  EXPECT_THAT(rig.face.lstMPRxChannelCalResult.Items(), ElementsAre("Band\tCal"));
}

TEST_F(RxRunFailure, OneChannelTwiceStopsTheRunAndLeavesTheLinkAtRest) {
  rig.face.txtDCSArfcn7.SetText("822");
  EXPECT_TRUE(rig.Run());
  EXPECT_EQ(rig.state.rf.RFParams.BAND[0].g_magic, 180);
  EXPECT_TRUE(rig.state.reply.ReplyDone);
  EXPECT_EQ(rig.state.rf.RFParams.BAND[0].agc_bands[1].upper_bound, 0);
}

TEST_F(RxRunFailure, APendingStopIsForgottenAndTheRunEndsThere) {
  rig.state.cal.CalStopRequested = true;
  rig.autoCal.cmdAutoCalStop.SetBackColor(kRed);
  EXPECT_TRUE(rig.Run());
  EXPECT_THAT(rig.Commands(), IsEmpty());
  EXPECT_FALSE(rig.state.cal.CalStopRequested);
  EXPECT_EQ(rig.autoCal.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_FALSE(rig.Run());
}

TEST_F(RxRunFailure, AStopStaysInAModeThatNothingSets) {
  rig.state.cal.CalMode = "RxALL";
  rig.state.cal.CalStopRequested = true;
  EXPECT_TRUE(rig.Run());
  EXPECT_TRUE(rig.state.cal.CalStopRequested);
}

TEST_F(RxRunFailure, AStopInTheRunTakesEffectAtTheNext) {
  rig.serial.answer = [&](const SentCommand& command) {
    rig.state.cal.CalStopRequested = true;
    return rig.Answer(command);
  };
  EXPECT_FALSE(rig.Run());
  EXPECT_EQ(rig.Commands().back(), "rfpw 8 1");
  EXPECT_TRUE(rig.Run());
}

TEST_F(RxRunFailure, ATestSetThatGoesAwayStopsTheRun) {
  rig.bus.At(1).absent = true;
  EXPECT_TRUE(rig.Run());
  ExpectFlags(false);
}

}  // namespace
}  // namespace orvane::test
