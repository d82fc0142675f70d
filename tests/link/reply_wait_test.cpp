#include "link/reply_wait.h"

#include "link/link_rig.h"

namespace orvane::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const std::string kInitialized = "02 14 00 20 00 00 00 20 02";

TEST(ReplyWait, TheSecondsFieldRoundsHalfToEvenAndWrapsAtTheMinute) {
  struct Case {
    TimePoint elapsed;
    int field;
  };
  for (const Case& c :
       {Case{milliseconds(0), 0}, Case{milliseconds(500), 0}, Case{milliseconds(501), 1}, Case{milliseconds(1500), 2},
        Case{milliseconds(2500), 2}, Case{milliseconds(2500) + TimePoint{1}, 3}, Case{milliseconds(59500), 0},
        Case{seconds(59), 59}, Case{milliseconds(62500), 2}, Case{milliseconds(62500) + TimePoint{1}, 3},
        Case{seconds(3600), 0}}) {
    EXPECT_EQ(SecondsField(c.elapsed), c.field) << c.elapsed.count();
  }
}

TEST(ReplyWait, EndsAtTheFirstMomentLaterThanTwoAndAHalfSeconds) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), kFullWait);
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_EQ(rig.tally.silentWaits, 1);
}

TEST(ReplyWait, AReplyAtTwoAndAHalfSecondsIsInTime) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.Later(milliseconds(2500), kInitialized);
  EXPECT_TRUE(rig.link.WaitForReply());
  EXPECT_EQ(rig.tally.silentWaits, 0);
}

TEST(ReplyWait, AReplyInTheVeryMomentOfTheLimitIsTooLateYetItsStatusStands) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.Later(kFullWait, kInitialized);
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_FALSE(rig.state.ReplyHandled);
  EXPECT_EQ(rig.tally.silentWaits, 0);
}

TEST(ReplyWait, ABoxThatOutlastsItEndsItAtTheNextLook) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.loop.PostAt(milliseconds(1), [&] { rig.loop.Block(seconds(30)); });
  rig.Later(seconds(31), kInitialized);
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), seconds(30) + milliseconds(1));
}

TEST(ReplyWait, ABoxOfJustAMinuteDoesNotEndIt) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.loop.PostAt(milliseconds(1), [&] { rig.loop.Block(seconds(60)); });
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), seconds(60) + kFullWait);
}

TEST(ReplyWait, OneSilenceIsCountedOnceHoweverManyWaitForIt) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.loop.PostAt(milliseconds(1), [&] { rig.link.WaitForReply(); });
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), milliseconds(1) + kFullWait);
  EXPECT_EQ(rig.tally.silentWaits, 1);
}

TEST(ReplyWait, OutsideTestModeEndsAtOnce) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.state.TargetMode = "";
  EXPECT_FALSE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), TimePoint{0});
  EXPECT_TRUE(rig.state.ReplyDone);
}

TEST(ReplyWait, ReturnsAtOnceWhenNothingIsAwaited) {
  LinkRig rig;
  EXPECT_TRUE(rig.link.WaitForReply());
  EXPECT_EQ(rig.loop.Now(), TimePoint{0});
  EXPECT_EQ(rig.link.Status(), 255) << "a status that is not there yet reads as nothing came";
}

TEST(ReplyWait, AFailureStatusCostsTheFullWait) {
  LinkRig rig;
  rig.Exchange("rfpw 1 62", "02 14 00 30 00 01 00 31 02");
  EXPECT_EQ(rig.loop.Now(), kFullWait);
  EXPECT_EQ(rig.state.TMStatus, "&H01");
  EXPECT_EQ(rig.link.Status(), 1);
  EXPECT_TRUE(rig.state.ReplyDone);
  EXPECT_TRUE(rig.cal.CalFailed);
  EXPECT_TRUE(rig.cal.CalStopRequested);
  EXPECT_EQ(rig.Shown(), "&H02&H14&H00&H30&H00&H01&H00&H31&H02\r\n&H30\r\n&H01\r\n");
  EXPECT_EQ(rig.tally.failureStatuses, 1);
  EXPECT_EQ(rig.tally.silentWaits, 0);
}

TEST(ReplyWait, AGoodReplyBehindAFailureStatusEndsIt) {
  LinkRig rig;
  rig.Later(milliseconds(1), "02 14 00 20 00 05 00 25 02");
  rig.Later(milliseconds(7), kInitialized);
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.loop.Now(), milliseconds(7));
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_TRUE(rig.cal.CalFailed);
}

}  // namespace
}  // namespace orvane::test
