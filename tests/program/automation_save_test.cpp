// Results into a file, through the dialogs of a run.

#include <gtest/gtest.h>

#include <algorithm>

#include "program/programs.h"

namespace orvane::test {
namespace {

/// A station in a folder of its own that saves into files.
class SaveMode : public testing::Test {
 protected:
  SaveMode() : station_({"--bench", "virtual"}, folder_.Path().string()) {
    station_.InitializeInstruments();
    station_.Set("frmAutoCal.optSaveModeFile", "checked", true);
  }
  /// Starts a run. @return what it asks before anything is measured.
  Json FirstQuestion() {
    run_ = station_.SendClick("OrvaneMain.cmdTargetInitialize");
    return station_.Await("fileDialog");
  }
  void Choose(const Json& dialog, const Json& path) {
    EXPECT_EQ(station_.ErrorOf("answer", {{"id", dialog["id"]}, {"path", path}}), 0);
  }
  Json VerdictOfRun() {
    EXPECT_EQ(station_.AnswerTo(run_)["result"], Json::object());
    return station_.Await("verdict");
  }

  TempFolder folder_;
  Station station_;
  int run_ = 0;
};

TEST_F(SaveMode, FileAsksFirstAndWritesAParameterFileBesideTheStation) {
  const Json dialog = FirstQuestion();
  EXPECT_EQ(dialog["mode"], "save");
  EXPECT_EQ(dialog["defaultExtension"], "epm");
  EXPECT_EQ(station_.ErrorOf("set", {{"control", "frmAutoCal.txtLoss"}, {"text", "1"}}), -32006) << "it is modal";
  EXPECT_EQ(station_.ErrorOf("answer", {{"id", dialog["id"]}, {"button", "OK"}}), -32602);
  Choose(dialog, "단말 7");
  EXPECT_EQ(VerdictOfRun()["complete"], true);

  EXPECT_EQ(station_.State("CalSaveFileName"), folder_ / "단말 7.epm");
  const std::string text = ContentOf(folder_ / "단말 7.epm");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1857);
  EXPECT_THAT(text, testing::StartsWith("rf_revision"));
}

TEST(Log, OfTheConsoleGoesToTheFileThatItsDialogNames) {
  const TempFolder folder;
  Station station({"--bench", "virtual"}, folder.Path().string());
  const int click = station.SendClick("OrvaneMain.cmdLogOn");
  station.Ask("answer", {{"id", station.Await("fileDialog")["id"]}, {"path", "today"}});
  station.AnswerTo(click);
  station.Ask("key", {{"control", "OrvaneMain.txtUserCommand"}, {"text", "rfpw\r"}});
  EXPECT_THAT(ContentOf(folder / "today.LOG"), testing::HasSubstr("Invalid Command !! rfpw\r\n"));
}

TEST_F(SaveMode, FileOverAnExistingNameAsksWhetherAndCancelAsksForAnotherName) {
  Fill(folder_ / "old.txt", std::string(500000, 'x'));
  Fill(folder_ / "kept.epm", "kept");
  station_.answersBoxes = false;
  Choose(FirstQuestion(), folder_ / "kept.epm");
  const Json first = station_.Await("box");
  EXPECT_EQ(first["text"], "Do you want to change with " + folder_ / "kept.epm?");
  EXPECT_EQ(first["buttons"], Json({"Yes", "No", "Cancel"}));
  station_.Ask("answer", {{"id", first["id"]}, {"button", "Cancel"}});
  Choose(station_.Await("fileDialog"), "old.txt");
  station_.Ask("answer", {{"id", station_.Await("box")["id"]}, {"button", "Yes"}});
  EXPECT_EQ(VerdictOfRun()["complete"], true);

  EXPECT_EQ(ContentOf(folder_ / "kept.epm"), "kept");
  const std::string text = ContentOf(folder_ / "old.txt");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1857);
  EXPECT_THAT(text, testing::Not(testing::HasSubstr("xxx"))) << "Yes deletes the old file";
}

TEST_F(SaveMode, FileThatCannotBeWrittenIsABoxAndNoCompleteStep) {
  Choose(FirstQuestion(), "missing/unit7.epm");
  const Json verdict = VerdictOfRun();
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], false);
  EXPECT_EQ(verdict["steps"][3]["complete"], false);
  EXPECT_THAT(std::string(verdict["steps"][3]["reason"]), testing::HasSubstr("missing/unit7.epm"));
  const auto& boxes = station_.Heard("box");
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0]["text"], "No such file or directory: " + folder_ / "missing/unit7.epm");
  EXPECT_EQ(boxes[0]["icon"], "exclamation");
}

TEST_F(SaveMode, ALogThatCannotBeLookedUpIsABoxAndTheRunGoesOn) {
  Choose(FirstQuestion(), "unit7");
  const int click = station_.SendClick("OrvaneMain.cmdLogOn");
  const std::string name(300, 'n');
  Choose(station_.Await("fileDialog"), name);
  EXPECT_EQ(station_.AnswerTo(click)["result"], Json::object());
  EXPECT_EQ(station_.Await("box")["text"], "File name too long: " + folder_ / (name + ".LOG"));
  EXPECT_EQ(station_.State("LogOffState"), true);
  EXPECT_EQ(VerdictOfRun()["complete"], true);
  EXPECT_TRUE(station_.Heard("failure").empty());
}

TEST_F(SaveMode, FileCancelledIsNoCompleteStepEither) {
  Choose(FirstQuestion(), nullptr);
  const Json verdict = VerdictOfRun();
  EXPECT_EQ(verdict["steps"][3]["complete"], false);
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

}  // namespace
}  // namespace orvane::test
