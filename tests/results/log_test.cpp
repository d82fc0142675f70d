#include "base/failure.h"
#include "results/results_controls.h"
#include "support/fake_desk.h"
#include "support/memory_files.h"

namespace orvane::test {
namespace {

struct Rig {
  Rig() {
    reply.TargetMode = "TestMode";
    controls.Connect();
  }
  /// Logs to "/run.LOG".
  void LogOn() {
    dialogs.answers.emplace_back("/run.LOG");
    main.cmdLogOn.Click();
  }

  Journal journal;
  FakeBoxes boxes{journal};
  FakeDialogs dialogs;
  MemoryFiles files;
  OrvaneMain main;
  ConsoleState state;
  ReplyState reply;
  ResultsConsole console{main, state, files, boxes};
  ResultsControls controls{main, console, state, reply, files, dialogs, boxes};
};

TEST(Log, TakesWhatTheConsoleShows) {
  Rig rig;
  rig.console.Append("before\n");
  rig.LogOn();
  EXPECT_EQ(rig.state.LogFileNumber, 1);
  EXPECT_FALSE(rig.state.LogOffState);
  EXPECT_EQ(rig.state.LogFileName, "/run.LOG");
  EXPECT_EQ(rig.main.Caption(), "ORVANE416_0402run.LOG");
  EXPECT_EQ(rig.main.cmdLogOn.BackColor(), kGreen);
  rig.console.Append("a\n");
  rig.console.AppendConsole(rig.main.txtAGCPM, "b\r\n");
  rig.console.ShowData(rig.main.txtResults, "\bcd\be");
  EXPECT_EQ(rig.files.content["/run.LOG"], "a\r\nb\r\nce") << "as inserted";
}

TEST(Log, WritesBackTheBytesOfAnInstrument) {
  Rig rig;
  rig.LogOn();
  rig.console.Append("µé");
  EXPECT_EQ(rig.files.content["/run.LOG"], "\xB5\xE9");
}

TEST(Log, TheSecondClickClosesItAndLeavesTheColour) {
  Rig rig;
  rig.LogOn();
  rig.console.Append("a");
  rig.main.cmdLogOn.Click();
  EXPECT_EQ(rig.state.LogFileNumber, 0);
  EXPECT_TRUE(rig.state.LogOffState);
  EXPECT_EQ(rig.main.Caption(), "ORVANE_up");
  EXPECT_EQ(rig.main.cmdLogOn.BackColor(), kGreen);
  rig.console.Append("b");
  EXPECT_EQ(rig.files.content["/run.LOG"], "a");
  EXPECT_EQ(rig.dialogs.shown.size(), 1U);
}

TEST(Log, AsksForAFileToSaveUnderAnEmptyName) {
  Rig rig;
  rig.main.dlgOpenLog.fileName = "/old.LOG";
  rig.main.cmdLogOn.Click();
  ASSERT_EQ(rig.dialogs.shown.size(), 1U);
  const FileDialog& dialog = rig.dialogs.shown[0].dialog;
  EXPECT_TRUE(rig.dialogs.shown[0].save);
  EXPECT_EQ(dialog.fileName, "");
  EXPECT_EQ(dialog.title, "Results Log On");
  EXPECT_EQ(dialog.filter, "로그파일(*.log)|*.log|All Files (*.*)|*.*");
  EXPECT_EQ(dialog.defaultExtension, "LOG");
  EXPECT_TRUE(rig.state.LogOffState) << "cancelled";
  EXPECT_EQ(rig.state.LogFileNumber, 0);
  EXPECT_TRUE(rig.files.content.empty());
}

TEST(Log, AFileThatExistsIsEmptiedOnYes) {
  Rig rig;
  rig.files.content["/run.LOG"] = "of yesterday, and long";
  rig.boxes.answers = {BoxButton::Yes};
  rig.LogOn();
  ASSERT_EQ(rig.boxes.Texts(), std::vector<std::string>{"Do you want to change with /run.LOG?"});
  EXPECT_EQ(rig.boxes.shown[0].buttons, (std::vector{BoxButton::Yes, BoxButton::No, BoxButton::Cancel}));
  rig.console.Append("a");
  EXPECT_EQ(rig.files.content["/run.LOG"], "a");
}

TEST(Log, GoesToTheEndOfWhatStandsInItsFile) {
  Rig rig;
  rig.files.content["/run.LOG"] = "old";
  rig.console.OpenLog("/run.LOG");
  rig.console.Append("a");
  EXPECT_EQ(rig.files.content["/run.LOG"], "olda");
}

TEST(Log, NoAsksForAnotherName) {
  Rig rig;
  rig.files.content["/run.LOG"] = "old";
  rig.boxes.answers = {BoxButton::No};
  rig.dialogs.answers = {"/run.LOG", "/other.LOG"};
  rig.main.cmdLogOn.Click();
  EXPECT_EQ(rig.files.content["/run.LOG"], "old");
  EXPECT_EQ(rig.main.Caption(), "ORVANE416_0402other.LOG");
}

TEST(Log, CancelEnds) {
  Rig rig;
  rig.files.content["/run.LOG"] = "old";
  rig.boxes.answers = {BoxButton::Cancel};
  rig.LogOn();
  EXPECT_EQ(rig.files.content["/run.LOG"], "old");
  EXPECT_TRUE(rig.state.LogOffState);
  EXPECT_EQ(rig.dialogs.shown.size(), 1U);
}

TEST(Log, AFileThatCannotBeReplacedOrOpenedIsToldInTheSystemsWords) {
  Rig rig;
  rig.files.content["/run.LOG"] = "old";
  rig.files.irreplaceable.insert("/run.LOG");
  rig.boxes.answers = {BoxButton::Yes};
  rig.LogOn();
  ASSERT_EQ(rig.boxes.shown.size(), 2U);
  EXPECT_EQ(rig.boxes.shown[1].icon, BoxIcon::Exclamation);
  EXPECT_TRUE(rig.state.LogOffState);

  rig.files.unopenable.insert("/new.LOG");
  rig.dialogs.answers.emplace_back("/new.LOG");
  rig.main.cmdLogOn.Click();
  ASSERT_EQ(rig.boxes.shown.size(), 3U);
  EXPECT_EQ(rig.boxes.shown[2].icon, BoxIcon::Exclamation);
  EXPECT_TRUE(rig.state.LogOffState);
  EXPECT_EQ(rig.state.LogFileNumber, 0);
  EXPECT_NE(rig.main.cmdLogOn.BackColor(), kGreen);
}

TEST(Log, OutsideTestModeTheTitleStays) {
  Rig rig;
  rig.reply.TargetMode = "";
  rig.main.SetCaption("ORVANE");
  rig.LogOn();
  EXPECT_EQ(rig.main.Caption(), "ORVANE");
  EXPECT_FALSE(rig.state.LogOffState);
}

TEST(Log, AFailedWriteIsTriedAgainAsOftenAsAsked) {
  Rig rig;
  rig.LogOn();
  rig.console.Append("a");
  rig.files.unwritable.insert("/run.LOG");
  rig.boxes.answers = {BoxButton::Retry, BoxButton::Retry};
  rig.boxes.whileOpen = [&](const Box& box) {
    EXPECT_EQ(box.icon, BoxIcon::Exclamation);
    EXPECT_EQ(box.buttons, (std::vector{BoxButton::Retry, BoxButton::Cancel}));
    if (rig.boxes.shown.size() == 2) rig.files.unwritable.clear();
  };
  rig.console.Append("b");
  EXPECT_EQ(rig.boxes.shown.size(), 2U);
  EXPECT_EQ(rig.files.content["/run.LOG"], "ab");
}

TEST(Log, RetryWritesJustWhatTheDiskHadNoRoomFor) {
  Rig rig;
  rig.LogOn();
  rig.console.Append("before ");
  rig.files.room = 3;
  rig.boxes.answers = {BoxButton::Retry, BoxButton::Retry, BoxButton::Retry};
  rig.boxes.whileOpen = [&](const Box&) {
    EXPECT_TRUE(rig.files.content.contains("/run.LOG"));
    rig.files.room = rig.boxes.shown.size() == 1 ? 2 : 100;
  };
  rig.console.Append("abcdefgh");
  EXPECT_EQ(rig.boxes.shown.size(), 2U);
  EXPECT_EQ(rig.files.content["/run.LOG"], "before abcdefgh");
}

TEST(Log, WhatIsShownWhileTheBoxOfAFailedWriteIsOpenGoesBehindIt) {
  Rig rig;
  rig.LogOn();
  rig.files.room = 2;
  rig.boxes.answers = {BoxButton::Retry};
  rig.boxes.whileOpen = [&](const Box&) {
    rig.files.room = 100;
    if (rig.boxes.shown.size() == 1) rig.console.Append("later");
  };
  rig.console.Append("first ");
  EXPECT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_EQ(rig.files.content["/run.LOG"], "first later");
}

TEST(Log, KeepsWhatItHasWhenItIsTurnedOffForAFullDisk) {
  Rig rig;
  rig.LogOn();
  rig.console.Append("before ");
  rig.files.room = 3;
  rig.boxes.answers = {BoxButton::Cancel};
  rig.console.Append("abcdefgh");
  EXPECT_EQ(rig.files.content["/run.LOG"], "before abc");
  rig.files.room = 100;
  rig.dialogs.answers = {"/next.LOG"};
  rig.main.cmdLogOn.Click();
  rig.console.Append("new");
  EXPECT_EQ(rig.files.content["/next.LOG"], "new") << "nothing of the last log";
}

TEST(Log, CancelAfterAFailedWriteTurnsItOff) {
  Rig rig;
  rig.LogOn();
  rig.files.unwritable.insert("/run.LOG");
  rig.boxes.answers = {BoxButton::Cancel};
  rig.console.Append("a");
  rig.console.Append("b");
  EXPECT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_EQ(rig.main.txtResults.Text(), "ab");
  EXPECT_EQ(rig.state.LogFileNumber, 0);
  EXPECT_TRUE(rig.state.LogOffState);
  EXPECT_EQ(rig.main.Caption(), "ORVANE_up");
}

TEST(Log, MayBeClosedWhileTheBoxOfAFailedWriteIsOpen) {
  Rig rig;
  rig.LogOn();
  rig.files.unwritable.insert("/run.LOG");
  rig.boxes.answers = {BoxButton::Retry};
  rig.boxes.whileOpen = [&](const Box&) { rig.main.cmdLogOn.Click(); };
  rig.console.Append("a");
  EXPECT_EQ(rig.boxes.shown.size(), 1U);
  EXPECT_TRUE(rig.state.LogOffState);
}

TEST(Results, ClearEmptiesTheConsole) {
  Rig rig;
  rig.console.Append("a");
  rig.main.cmdResultClear.Click();
  EXPECT_EQ(rig.main.txtResults.Text(), "");
}

}  // namespace
}  // namespace orvane::test
