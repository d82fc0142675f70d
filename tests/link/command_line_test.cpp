#include "base/failure.h"
#include "link/command_words.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

TEST(CommandLine, SplitsAtBlanksCommasTabsAndLineEnds) {
  for (const char* line : {"rfe 0", "rfe,0", "  rfe   0  ", "rfe\t0\r\n", ",rfe, ,0"}) {
    LinkRig rig;
    EXPECT_EQ(rig.BodyOf(line), "23 00 00 23 02") << line;
    EXPECT_EQ(rig.main.txtUserCommand.Text(), "");
  }
}

TEST(CommandLine, CountsItsWords) {
  const WordArray words = WordSplitter("rfpw 1, 62\r");
  EXPECT_EQ(words.Count(), 3U);
  EXPECT_EQ(words[1], "rfpw");
  EXPECT_EQ(words[3], "62");
  const WordArray none = WordSplitter("\r");
  EXPECT_EQ(none.Count(), 1U);
  EXPECT_EQ(none[1], "");
}

TEST(CommandLine, HoldsAHundredWords) {
  std::string line = "ti";
  for (int i = 1; i < 100; ++i) line += " 1";
  LinkRig rig;
  EXPECT_EQ(rig.BodyOf(line), "20 20 02");
  rig.main.txtUserCommand.SetText(line + " 1");
  EXPECT_THROW(rig.link.CommandInterpreter(), StationFailure);
}

TEST(CommandLine, AnArgumentThatCannotBeOneSendsNothingAndStays) {
  for (const char* line : {"rfe zz", "rfe -", "rfe 0xx1", "rfe 0XX1", "nonsense 1 &x"}) {
    LinkRig rig;
    EXPECT_EQ(rig.BodyOf(line), "") << line;
    EXPECT_EQ(rig.Shown(), "Invalid Command !! \r\n") << line;
    EXPECT_EQ(rig.main.txtUserCommand.Text(), line);
    EXPECT_EQ(rig.tally.refusedLines, 1);
  }
}

TEST(CommandLine, EachCharacterOfAnArgumentPassesByItself) {
  for (const char c : std::string_view("0123456789ABCDEFabcdef*#")) {
    LinkRig rig;
    EXPECT_EQ(rig.BodyOf(std::string("nonsense ") + c), "00 00 02") << c;
  }
  for (const char c : std::string_view("GZgzxX&+-.$@")) {
    LinkRig rig;
    EXPECT_EQ(rig.BodyOf(std::string("nonsense ") + c), "") << c;
  }
}

TEST(CommandLine, StarsAndHashesAndAnyLetterBesideADigitPassTheFirstCheck) {
  for (const char* line : {"nonsense *", "nonsense #", "nonsense zz9", "nonsense 0xX1"}) {
    LinkRig rig;
    EXPECT_EQ(rig.BodyOf(line), "00 00 02") << line;
  }
}

TEST(CommandLine, AMissingArgumentIsNamedAndTheOldStatusStands) {
  LinkRig rig;
  rig.Exchange("ti", "02 14 00 20 00 00 00 20 02");
  const TimePoint before = rig.loop.Now();
  rig.serial.writes.clear();
  for (const char* line : {"rfpw", "rfpw 1", "sr 1x", "stw", "stw 100 1 2 3 4", "rfpw 1x"}) {
    rig.main.txtResults.SetText("");
    rig.link.RunTargetCommand(line);
    const std::string word = std::string(line).substr(0, std::string(line).find(' '));
    EXPECT_EQ(rig.Shown(), "Invalid Command !! " + word + "\r\n") << line;
    EXPECT_TRUE(rig.serial.writes.empty());
    EXPECT_EQ(rig.main.txtUserCommand.Text(), "");
    EXPECT_EQ(rig.state.TMStatus, "&H00") << "callers go on by the status before";
  }
  EXPECT_EQ(rig.loop.Now(), before) << "nothing is awaited";
  EXPECT_EQ(DoubtsBetween({}, rig.tally), "Exchanges with the Target: 6 never sent")
      << "whoever judges the run by the status alone would miss them";
}

TEST(CommandLine, TheDataOfItsFrameStandAsTheyWentOut) {
  LinkRig rig;
  EXPECT_EQ(rig.BodyOf("rfpw 1 62"), "30 01 00 3E 00 0F 02");
  const auto& data = rig.state.FrameData;
  EXPECT_EQ((std::vector<int>(data.begin(), data.begin() + 5)), (std::vector<int>{1, 0, 62, 0, 0}));
  EXPECT_EQ(rig.BodyOf("rfpw 16 2"), "30 10 10 00 10 02 00 22 02");
  EXPECT_EQ((std::vector<int>(data.begin(), data.begin() + 7)), (std::vector<int>{16, 16, 0, 16, 2, 0, 0}));
  EXPECT_EQ(rig.BodyOf("stw"), "");
  EXPECT_EQ(data[4], 2) << "a line that is refused makes no frame";
}

TEST(CommandLine, EveryOneSetsTheSpinBack) {
  LinkRig rig;
  rig.state.ReplySpin = 10000;
  rig.main.txtUserCommand.SetText("rfe zz");
  rig.link.CommandInterpreter();
  EXPECT_EQ(rig.state.ReplySpin, 0);
}

TEST(UserCommand, TheFirstKeyAfterACommandStartsAFreshLine) {
  LinkRig rig;
  rig.main.lblUserCommand.SetCaption("Payload Display");
  rig.main.txtUserCommand.SetText("old");
  rig.hand.Key(rig.main.txtUserCommand, U't');
  EXPECT_EQ(rig.main.txtUserCommand.Text(), "t");
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "User Command:");
  rig.hand.Key(rig.main.txtUserCommand, U'i');
  rig.hand.Key(rig.main.txtUserCommand, 13);
  EXPECT_EQ(Hex(rig.serial.writes.at(1).substr(0, 3)), "20 20 02");
  EXPECT_EQ(rig.loop.Now(), kFullWait) << "Enter waits for the reply";
}

TEST(UserCommand, BackspaceKeepsTheOldLine) {
  LinkRig rig;
  rig.main.lblUserCommand.SetCaption("Payload Display");
  rig.main.txtUserCommand.SetText("old");
  rig.hand.Key(rig.main.txtUserCommand, 8);
  EXPECT_EQ(rig.main.txtUserCommand.Text(), "ol");
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "User Command:");
}

TEST(UserCommand, EnterBehindASentCommandSendsTheEmptyLine) {
  LinkRig rig;
  rig.main.lblUserCommand.SetCaption("Payload Display");
  rig.main.txtUserCommand.SetText("ti");
  rig.hand.Key(rig.main.txtUserCommand, 13);
  EXPECT_EQ(Hex(rig.serial.writes.at(1).substr(0, 3)), "00 00 02");
}

TEST(UserCommand, AClickEmptiesTheBoxAndLeavingItShowsThePayloadCaption) {
  LinkRig rig;
  rig.main.txtUserCommand.SetText("old");
  rig.main.txtUserCommand.onLostFocus();
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "Payload Display");
  rig.hand.Click(rig.main.txtUserCommand);
  EXPECT_EQ(rig.main.txtUserCommand.Text(), "");
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "User Command:");
}

TEST(UserCommand, OutsideTestModeOnlyLeavingTheBoxActs) {
  LinkRig rig;
  rig.state.TargetMode = "";
  rig.main.txtUserCommand.SetText("ti");
  rig.main.txtUserCommand.onLostFocus();
  rig.hand.Key(rig.main.txtUserCommand, 13);
  rig.hand.Click(rig.main.txtUserCommand);
  EXPECT_EQ(rig.main.txtUserCommand.Text(), "ti");
  EXPECT_EQ(rig.main.lblUserCommand.Caption(), "Payload Display");
  EXPECT_TRUE(rig.serial.writes.empty());
}

}  // namespace
}  // namespace orvane::test
