#include "base/failure.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(Frame, GoesOutAsSyncAndABodyOfFiftyOneBytes) {
  LinkRig rig;
  rig.main.txtUserCommand.SetText("ti");
  rig.link.CommandInterpreter();
  ASSERT_EQ(rig.serial.writes.size(), 2U);
  EXPECT_EQ(Hex(rig.serial.writes[0]), "02 14");
  EXPECT_EQ(Hex(rig.serial.writes[1]), "20 20 02" + Repeated(" 00", 48));
  EXPECT_EQ(rig.serial.ahead, (std::vector<std::string>{"\x02\x14"})) << "a device may have both at once";
}

TEST(Frame, EscapesDataAndChecksumButNotTheOperationCode) {
  LinkRig rig;
  EXPECT_EQ(rig.BodyOf("rxpw 1 2"), "34 01 00 10 02 00 37 02");
  EXPECT_EQ(rig.BodyOf("rxpw 1 16"), "34 01 00 10 10 00 25 02");
  EXPECT_EQ(rig.BodyOf("rfpw 50 0"), "30 32 00 00 00 10 02 02");
  EXPECT_EQ(rig.BodyOf("rfpw 32 0"), "30 20 00 00 00 10 10 02");
  rig.link.BuildAndSendFrame(16, 1, {5}, 21);
  EXPECT_EQ(Hex(rig.serial.writes.back().substr(0, 4)), "10 05 15 02");
}

TEST(Frame, WithoutDataTakesItsChecksumAsItIs) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(16, 0, {}, 16);
  EXPECT_EQ(Hex(rig.serial.writes.back().substr(0, 4)), "10 10 02 00");
}

TEST(Frame, TheEscapeScanEndsTenPlacesBehindTheData) {
  LinkRig rig;
  const std::string zeros = Repeated(" 0", 19);
  // Eleven escapes put the last value at place 43, where the scan still looks; twelve put it beyond.
  EXPECT_EQ(rig.BodyOf("ttw 3" + Repeated(" 16", 11) + " 0" + zeros + " 2"),
            "38 03" + Repeated(" 10 10", 11) + Repeated(" 00", 20) + " 10 02 29 02");
  EXPECT_EQ(rig.BodyOf("ttw 3" + Repeated(" 16", 12) + zeros + " 2"),
            "38 03" + Repeated(" 10 10", 12) + Repeated(" 00", 19) + " 02 39 02");
}

TEST(Frame, TheScanAlsoEscapesWhatStandsRightBehindTheData) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(35, 1, {7, 2}, 36);
  EXPECT_EQ(Hex(rig.serial.writes.back().substr(0, 5)), "23 07 10 24 02");
}

TEST(Frame, TheTerminatorMustLandWithinTheBody) {
  LinkRig rig;
  EXPECT_EQ(rig.BodyOf("ttw 3" + Repeated(" 16", 15)),
            "38 03" + Repeated(" 10 10", 15) + Repeated(" 00", 17) + " 2B 02");
  EXPECT_NE(rig.BodyOf("stw 3" + Repeated(" 0", 47)), "");
  for (const std::string& line : {"ttw 3" + Repeated(" 16", 16),    // one escape too many
                                  "ttw 42" + Repeated(" 16", 15),   // its checksum is 02 and needs one too
                                  "stw 3" + Repeated(" 0", 48)}) {  // 49 data bytes
    rig.serial.writes.clear();
    rig.main.txtUserCommand.SetText(line);
    EXPECT_THROW(rig.link.CommandInterpreter(), StationFailure) << line;
    EXPECT_TRUE(rig.serial.writes.empty()) << line;
  }
}

TEST(Frame, AChecksumThatIsNoByteSendsNothing) {
  LinkRig rig;
  for (const Integer checksum : {Integer{-1}, Integer{256}}) {
    EXPECT_THROW(rig.link.BuildAndSendFrame(32, 0, {}, checksum), StationFailure);
    EXPECT_THROW(rig.link.BuildAndSendFrame(35, 1, {7}, checksum), StationFailure);
  }
  EXPECT_TRUE(rig.serial.writes.empty());
  EXPECT_EQ(rig.state.TMStatus, "");
}

TEST(Frame, AFailedAssemblyLeavesTheLinkAsItWas) {
  LinkRig rig;
  rig.Exchange("rfpr 2", "02 14 00 31 00 00 00 01 00 05 00 00 00 35 02");
  ASSERT_EQ(rig.state.TMStatus, "&H00");
  for (const char* line : {"tms 300", "rfe 0x1"}) {
    const TimePoint before = rig.loop.Now();
    EXPECT_THROW(rig.link.RunTargetCommand(line), StationFailure);
    EXPECT_EQ(rig.loop.Now(), before) << "no wait";
    EXPECT_EQ(rig.main.txtUserCommand.Text(), line);
    EXPECT_EQ(rig.state.TMStatus, "&H00");
    EXPECT_EQ(rig.state.ReplyOperation, "&H31");
    EXPECT_EQ(rig.state.ReplyItem, "&H01");
    EXPECT_TRUE(rig.state.ReplyDone);
  }
}

TEST(Frame, SendingMarksTheReplyAsAwaited) {
  LinkRig rig;
  rig.Exchange("rfpr 2", "02 14 00 31 00 00 00 01 00 05 00 00 00 35 02");
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  EXPECT_FALSE(rig.state.ReplyDone);
  EXPECT_EQ(rig.state.TMStatus, "&HFF");
  EXPECT_EQ(rig.state.ReplyOperation, "");
  EXPECT_EQ(rig.state.ReplyItem, "");
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "Payload Display");
  EXPECT_EQ(rig.tally.commands, 2);
  EXPECT_EQ(rig.tally.bytesOut, 106);
}

TEST(Frame, AClosedPortCostsABoxAndAFullWait) {
  LinkRig rig;
  rig.serial.Close();
  rig.boxes.whileOpen = [&](const Box&) {
    EXPECT_EQ(rig.loop.Now(), TimePoint{0}) << "the box is ahead of the wait";
  };
  rig.link.RunTargetCommand("ti");
  ASSERT_EQ(rig.boxes.Texts(), std::vector<std::string>{"Target must be initialized at first."});
  EXPECT_EQ(rig.boxes.shown[0].title, "Warning");
  EXPECT_EQ(rig.boxes.shown[0].icon, BoxIcon::Stop);
  EXPECT_TRUE(rig.serial.writes.empty());
  EXPECT_EQ(rig.state.TMStatus, "&HFF");
  EXPECT_EQ(rig.link.Status(), 255);
  EXPECT_EQ(rig.loop.Now(), kFullWait);
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "User Command:");
  EXPECT_EQ(rig.main.txtUserCommand.Text(), "");
}

TEST(Frame, TextSentDirectlyGoesCharacterByCharacterWithAPaceBehindEach) {
  LinkRig rig;
  rig.link.DataSend("a\u00E9");
  EXPECT_EQ(rig.serial.writes, (std::vector<std::string>{"a", "\xE9"})) << "one byte a character";
  EXPECT_EQ(rig.tally.bytesOut, 2);
  EXPECT_FALSE(rig.state.ReplyDone);
  EXPECT_EQ(rig.loop.Now(), TimePoint{2 * 20000 * 2});
}

TEST(Pace, CountsAsTheBoxSays) {
  LinkRig rig;
  rig.main.txtSyncDelay.SetText("300");
  rig.link.PaceDelay(4);
  EXPECT_EQ(rig.state.SyncDelay, 300);
  EXPECT_EQ(rig.loop.Now(), TimePoint{4 * 300 * 2});
  rig.main.txtSyncDelay.SetText("-5");
  rig.link.PaceDelay();
  EXPECT_EQ(rig.loop.Now(), TimePoint{4 * 300 * 2}) << "a count from 1 to -5 is none";
  rig.main.txtSyncDelay.SetText("soon");
  EXPECT_THROW(rig.link.PaceDelay(), StationFailure);
}

}  // namespace
}  // namespace orvane::test
