#include "base/failure.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

using std::chrono::milliseconds;

const std::string kInitialized = "02 14 00 20 00 00 00 20 02";
const std::string kTestModeReady = "02 14 00 21 00 00 00 21 02";

TEST(Gathering, DecodesAsSoonAsTheFrameIsWhole) {
  LinkRig rig;
  rig.Later(milliseconds(1), "02 14 00 20");
  rig.Later(milliseconds(4), "00 00 00 20 02");
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.loop.Now(), milliseconds(4));
  EXPECT_EQ(rig.Shown(), "TM Initiailize OK !!\r\n");
  EXPECT_EQ(rig.link.Status(), 0);
}

TEST(Gathering, JoinsBytesThatComeOneByOneIntoOneReply) {
  LinkRig rig;
  const std::string bytes = Bytes("02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02");
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    rig.Later(std::chrono::microseconds(87 * (i + 1)), Hex(bytes.substr(i, 1)));
  }
  rig.link.RunTargetCommand("rfpr 1");
  EXPECT_EQ(rig.Shown(), "BCCH ARFCN = 62\r\n");
  EXPECT_EQ(rig.loop.Now(), std::chrono::microseconds(87 * bytes.size()));
  EXPECT_FALSE(rig.state.ReplyHandled);
  EXPECT_FALSE(rig.decoder.Gathering());
}

TEST(Gathering, AFrameThatNeverCompletesIsGivenUpSixtyMillisecondsAfterItsFirstText) {
  LinkRig rig;
  rig.Later(milliseconds(5), "02 14 00 20");
  rig.Later(milliseconds(15), "00");
  std::string within;
  std::string behind = "?";
  rig.loop.PostAt(milliseconds(65) - TimePoint{1}, [&] { within = rig.state.ReplyBuffer; });
  rig.loop.PostAt(milliseconds(65) + TimePoint{1}, [&] { behind = rig.state.ReplyBuffer; });
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(Hex(within), "02 14 00 20 00");
  EXPECT_EQ(behind, "");
  EXPECT_EQ(rig.state.ReplySpin, 10000);
  EXPECT_EQ(rig.link.Status(), 255);
  EXPECT_EQ(rig.loop.Now(), kFullWait);
  EXPECT_EQ(rig.tally.silentWaits, 1);
}

TEST(Gathering, AReplyThatAnAdapterHandsOverInPiecesIsOneReply) {
  // Adapters on USB send what they hold every 16 ms, each piece late by what the computer is busy with.
  for (const int pause : {16, 25, 55}) {
    LinkRig rig;
    rig.Later(milliseconds(3), "02 14 00 31 00 00 00 01");
    rig.Later(milliseconds(3 + pause), "00 3E 00 00 00 0E 02");
    rig.link.RunTargetCommand("rfpr 1");
    EXPECT_EQ(rig.Shown(), "BCCH ARFCN = 62\r\n") << pause;
    EXPECT_EQ(rig.loop.Now(), milliseconds(3 + pause));
    EXPECT_EQ(DoubtsBetween({}, rig.tally), "");
  }
}

TEST(Gathering, BehindItsEndEachTextIsDecodedAtOnce) {
  LinkRig rig;
  rig.Later(milliseconds(5), "55");
  rig.Later(milliseconds(70), "02 14 00 20");
  rig.Later(milliseconds(71), "00 00 00 20 02");
  rig.Later(milliseconds(80), kInitialized);
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.loop.Now(), milliseconds(80)) << "the halves are lost, the whole one is taken";
  EXPECT_EQ(rig.link.Status(), 0);
}

TEST(Gathering, ItsTimeRunsFromTheFirstTextOfAllBehindACommand) {
  LinkRig rig;
  rig.Later(milliseconds(1), "02 14 00 20 00 05 00 25 02");
  rig.Later(milliseconds(55), "02 14 00 20");
  rig.Later(milliseconds(62), "00 00 00 20 02");
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.state.TMStatus, "&H05") << "the halves came apart at 61 ms";
}

TEST(Gathering, BehindADecodeToo) {
  LinkRig rig;
  double spin = 0;
  rig.Later(milliseconds(1), "02 14 00 20 00 05 00 25 02");
  rig.loop.PostAt(milliseconds(1), [&] { spin = rig.state.ReplySpin; });
  rig.Later(milliseconds(2), "02 14 00 20");
  rig.Later(milliseconds(3), "00 00 00 20 02");
  rig.Later(milliseconds(7), kInitialized);
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(spin, 10000);
  EXPECT_EQ(rig.loop.Now(), milliseconds(7)) << "the halves behind the failure status are lost";
  EXPECT_EQ(rig.link.Status(), 0);
}

TEST(Gathering, InThePlainLayoutTheCodeAndTheStatusStandRightBehindTheSync) {
  LinkRig rig;
  rig.state.PlainReplyMode = true;
  rig.Exchange("ti", "02 14 20 00 20 02");
  EXPECT_EQ(rig.Shown(), "TM Initiailize OK !!\r\n");
  EXPECT_EQ(rig.state.ReplyOperation, "&H20");
  EXPECT_EQ(rig.state.TMStatus, "&H00");
}

TEST(Gathering, ACommandGivesTheNextReplyItsFullTime) {
  LinkRig rig;
  rig.Later(milliseconds(5), "55");
  rig.link.RunTargetCommand("ti");
  rig.Later(milliseconds(5), "02 14 00 20");
  rig.Later(milliseconds(64), "00 00 00 20 02");
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.link.Status(), 0);
}

TEST(Gathering, ACommandGivenMeanwhileStartsItAnew) {
  LinkRig rig;
  rig.Later(milliseconds(1), "55");
  rig.loop.PostAt(milliseconds(55), [&] {
    rig.main.txtUserCommand.SetText("tms 1");
    rig.link.CommandInterpreter();
  });
  rig.Later(milliseconds(62), "02 14 00 21");
  rig.Later(milliseconds(114), "00 00 00 21 02");
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.loop.Now(), milliseconds(114));
  EXPECT_EQ(rig.state.ReplyOperation, "&H21");
}

TEST(Gathering, WhatFollowsAFrameInTheSameTextIsDroppedAndTold) {
  LinkRig rig;
  rig.Exchange("ti", kInitialized + " " + kTestModeReady);
  EXPECT_EQ(rig.Shown(), "TM Initiailize OK !!\r\n");
  EXPECT_EQ(rig.state.ReplyBuffer, "");
  EXPECT_EQ(rig.tally.strayReplies, 1);
}

TEST(Gathering, AStrayByteAheadShiftsThePads) {
  LinkRig rig;
  rig.Exchange("mpr 19", "55 02 14 00 45 00 00 00 13 00 01 00 00 00 57 02");
  EXPECT_EQ(rig.Shown(), "ADC Enable = 0\r\n");
  EXPECT_EQ(rig.tally.strayReplies, 1);
  rig.Exchange("mpr 19", "02 14 00 45 00 00 00 13 00 01 00 00 00 57 02");
  EXPECT_EQ(rig.state.AdcEnableValue, 1);
  EXPECT_EQ(rig.tally.strayReplies, 1);
}

TEST(Gathering, TextInIdleIsConsumedAndChangesNothing) {
  LinkRig rig;
  rig.Exchange("ti", kInitialized);
  rig.serial.Receive(Bytes(kTestModeReady));
  EXPECT_EQ(rig.serial.Input(), "");
  EXPECT_EQ(rig.Shown(), "TM Initiailize OK !!\r\n");
  EXPECT_EQ(rig.state.ReplyOperation, "&H20");
  EXPECT_EQ(rig.state.ReplyBuffer, "");
  EXPECT_EQ(rig.tally.unaskedTexts, 1);
  EXPECT_EQ(rig.tally.bytesIn, 18);
}

TEST(Gathering, OutsideTestModeTextIsDropped) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.state.TargetMode = "";
  rig.serial.Receive(Bytes(kInitialized));
  EXPECT_EQ(rig.state.TMStatus, "&HFF");
}

TEST(Gathering, KeepsWhatAnEarlierLongerReplyLeft) {
  LinkRig rig;
  rig.Exchange("rfpr 1", "02 14 00 31 00 00 00 01 00 3E 00 00 00 0E 02");
  rig.Exchange("ti", kInitialized);
  EXPECT_EQ(rig.state.ReplyBytes[8], "&H02");
  EXPECT_EQ(rig.state.ReplyBytes[9], "&H3E");
  EXPECT_EQ(rig.state.ReplyBytes[14], "&H02");
  // An escape taken out empties the last place of its own gathering, and only that.
  rig.Exchange("rfpr 4", "02 14 00 31 00 10 00 02 00 31 02");
  EXPECT_EQ(rig.state.ReplyBytes[9], "&H02");
  EXPECT_EQ(rig.state.ReplyBytes[10], "");
  EXPECT_EQ(rig.state.ReplyBytes[11], "&H00");
}

TEST(Gathering, HoldsTwoHundredBytes) {
  LinkRig rig;
  std::string filler;
  for (int i = 0; i < 191; ++i) filler += " 55";
  rig.Exchange("ti", kInitialized + filler);
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(rig.state.ReplyBytes[199], "&H55");
}

TEST(Gathering, TheTwoHundredAndFirstByteStopsEverything) {
  LinkRig rig;
  std::string filler;
  for (int i = 0; i < 192; ++i) filler += " 55";
  rig.Later(milliseconds(1), kInitialized + filler);
  bool went = false;
  rig.nest.Run([&] {
    PassOver([&] { rig.link.RunTargetCommand("ti"); });
    went = true;
  });
  EXPECT_FALSE(went) << "a failure in a served event ends the handler that waits, passed over or not";
  EXPECT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_EQ(rig.state.ReplyBuffer, "");
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_FALSE(rig.decoder.Gathering());
  rig.Exchange("ti", kInitialized);
  EXPECT_EQ(rig.link.Status(), 0) << "the link works on";
}

TEST(Gathering, AReplyThatNobodyWaitsForDoesNotCostTheNextOne) {
  LinkRig rig;
  rig.main.txtUserCommand.SetText("tms 1");
  rig.link.CommandInterpreter();
  rig.serial.Receive(Bytes(kTestModeReady));
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_FALSE(rig.state.ReplyHandled);
  rig.Exchange("ti", kInitialized);
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(rig.loop.Now(), milliseconds(1));
}

TEST(Gathering, TheHandledFlagStandsFromTheDecodeToTheEndOfTheWait) {
  LinkRig rig;
  bool seen = false;
  rig.Later(milliseconds(1), kInitialized);
  rig.loop.PostAt(milliseconds(1), [&] { seen = rig.state.ReplyHandled; });
  rig.link.RunTargetCommand("ti");
  EXPECT_TRUE(seen);
  EXPECT_FALSE(rig.state.ReplyHandled);
}

TEST(Gathering, ACommandGivenInTheTurnOfAReplyGetsItsOwn) {
  LinkRig rig;
  int status = -1;
  rig.Later(milliseconds(1), kInitialized);
  rig.loop.PostAt(milliseconds(1), [&] {
    rig.Exchange("tms 1", kTestModeReady);
    status = rig.link.Status();
  });
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(rig.Shown(), "TM Initiailize OK !!\r\nTarget Test Mode ready !!\r\n");
  EXPECT_EQ(rig.loop.Now(), milliseconds(2));
}

TEST(Gathering, ACommandGivenWhileHalfAReplyIsThereTakesThatAlong) {
  LinkRig rig;
  rig.Later(milliseconds(1), "02 14 00 20 00 00");
  rig.loop.PostAt(milliseconds(2), [&] { rig.Exchange("tms 1", kTestModeReady); });
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.tally.unaskedTexts, 1) << "text left over as the next command goes out";
  EXPECT_EQ(rig.state.ReplyBuffer, "");
  EXPECT_FALSE(rig.decoder.Gathering());
}

TEST(Gathering, ALateReplyToAnEarlierCommandIsTold) {
  LinkRig rig;
  rig.link.RunTargetCommand("ti");
  rig.Exchange("tms 1", kInitialized);
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(rig.tally.foreignReplies, 1);
  EXPECT_EQ(DoubtsBetween({}, rig.tally),
            "Exchanges with the Target: 1 without a reply, 1 with a reply to another command");
  EXPECT_EQ(DoubtsBetween(rig.tally, rig.tally), "");
}

TEST(Gathering, RestForgetsEverythingThatIsUnderWay) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.state.ReplyBuffer = "half";
  rig.state.ReplyHandled = true;
  rig.link.Rest();
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_FALSE(rig.state.ReplyHandled);
  EXPECT_EQ(rig.state.ReplyBuffer, "");
}

}  // namespace
}  // namespace orvane::test
