#include "ramp/ramp_file.h"
#include "ramp_desk.h"

namespace orvane::test {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class RampTransferOn : public RampDesk, public ::testing::WithParamInterface<bool> {
 protected:
  RampTransferOn() {
    OpenPanels();
    OpenPort();
    if (OnDialog()) return;
    panels.main.ramp.optTarget.Select();
    panels.main.ramp.optFile.Select();
  }
  [[nodiscard]] bool OnDialog() const { return GetParam(); }
  [[nodiscard]] RampEditorFace& Face() { return OnDialog() ? dialogFace : mainFace; }
  /// The n-th command of the save fails, for every n in the list.
  void FailCommands(std::vector<std::size_t> failing) {
    serial.answer = [this, failing = std::move(failing)](const SentCommand& command) {
      const bool fails = std::find(failing.begin(), failing.end(), serial.commands.size() - 1) != failing.end();
      return PaddedReply(command.operation, fails ? 1 : 0);
    };
  }
};

INSTANTIATE_TEST_SUITE_P(Panels, RampTransferOn, ::testing::Bool(),
                         [](const auto& panel) { return panel.param ? "Dialog" : "Main"; });

TEST_P(RampTransferOn, SavesATableFileWithItsCompanion) {
  dialogs.answers = {"/d/stem.abc"};
  Face().cmdRampSave.Click();
  ASSERT_THAT(dialogs.shown, SizeIs(1));
  EXPECT_TRUE(dialogs.shown[0].save);
  EXPECT_EQ(dialogs.shown[0].dialog.title, "Save Ramp Table");
  EXPECT_EQ(dialogs.shown[0].dialog.filter, "(*.dat)|*.dat|All Files (*.*)|*.*;");
  EXPECT_EQ(dialogs.shown[0].dialog.defaultExtension, "DAT");
  EXPECT_EQ(files.content.at("/d/stem.abc").size(), kRampFileSize);
  EXPECT_EQ(files.content.at("/d/stem.xls"), RampSideText(state.ramp));
  EXPECT_THAT(files.content, SizeIs(2));
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Commands(), IsEmpty());
}

TEST_P(RampTransferOn, ANameTooShortForACompanionHasNone) {
  dialogs.answers = {"/folder/abc"};
  Face().cmdRampSave.Click();
  EXPECT_THAT(files.content, SizeIs(1));
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_P(RampTransferOn, SavedAndLoadedAgainIsTheSame) {
  dialogs.answers = {"a.dat", "/d/a.dat"};
  Face().cmdRampSave.Click();
  files.content["/d/a.dat"] = files.content["a.dat"];
  const RampState saved = state.ramp;
  for (auto& table : state.ramp.RampTable) table.fill("1");
  Face().txtRampTableIndex.SetText("16");
  Face().cmdRampLoad.Click();
  EXPECT_FALSE(dialogs.shown.at(1).save);
  EXPECT_EQ(dialogs.shown.at(1).dialog.title, "Open Ramp Table");
  EXPECT_EQ(Face().dlgRampSave.initialFolder, "/d") << "the folder of the load is kept";
  EXPECT_EQ(state.ramp.RampTable, saved.RampTable);
  EXPECT_EQ(Face().txtUP[0]->Text(), "16") << "the boxes show the table of the index";
  EXPECT_EQ(state.rf.RFParams.BAND[1].ramp_tables[1].ramp_up[0], 16) << "and the record has it";
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[14].ramp_down[15], 13);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_P(RampTransferOn, CancelInADialogDoesNothing) {
  state.ramp.RampTable[0][0] = "5";
  Face().cmdRampLoad.Click();
  Face().cmdRampSave.Click();
  EXPECT_THAT(dialogs.shown, SizeIs(2));
  EXPECT_EQ(Face().txtUP[0]->Text(), "0") << "a cancelled load does not refresh";
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[0], 0);
  EXPECT_THAT(files.content, IsEmpty());
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_P(RampTransferOn, AFileThatCannotBeOpenedEndsTheLoad) {
  state.ramp.RampTable[0][0] = "5";
  dialogs.answers = {"none.dat"};
  Face().cmdRampLoad.Click();
  ASSERT_THAT(boxes.shown, SizeIs(1));
  EXPECT_EQ(boxes.shown[0].text, "none.dat: No such file or directory");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(Face().txtUP[0]->Text(), "0");
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[0], 0);
}

TEST_P(RampTransferOn, AShortFileKeepsTheRestOfTheTableAndIsLoadedAllTheSame) {
  files.content["short.dat"] =
      "\x02\x00"s
      "11" +
      std::string(124, 'z') + "\x01\x00"s;
  dialogs.answers = {"short.dat"};
  Face().cmdRampLoad.Click();
  EXPECT_EQ(state.ramp.RampTable[0][0], "11");
  EXPECT_EQ(state.ramp.RampTable[0][1], "1");
  EXPECT_EQ(Face().txtUP[0]->Text(), "11");
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[0], 11);
  EXPECT_EQ(state.rf.RFParams.BAND[1].ramp_tables[15].ramp_up[0], 30);
}

TEST_P(RampTransferOn, AWholeFileHealsWhatADamagedOneLeft) {
  state.ramp.damage = "RampTable.dat is 0 bytes long, not 126976.";
  files.content["whole.dat"] = RampRecords(CountingTables());
  files.content["cut.dat"] = files.content["whole.dat"].substr(0, 5000);
  dialogs.answers = {"cut.dat", "whole.dat"};
  Face().cmdRampLoad.Click();
  EXPECT_EQ(state.ramp.damage, "cut.dat is 5000 bytes long, not 126976.");
  Face().cmdRampLoad.Click();
  EXPECT_EQ(state.ramp.damage, "");
}

TEST_P(RampTransferOn, TheCopyIntoTheRecordStopsAtATextThatIsNoNumber) {
  mainFace.optTarget.Select();
  dialogFace.optTarget.Select();
  state.ramp.RampTable[1][0] = "x";
  Face().cmdRampLoad.Click();
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[15], 15);
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[1].ramp_up[1], 0);
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[2].ramp_up[0], 0);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_P(RampTransferOn, OverwritingAsksInThePanelsWords) {
  files.content["/d/a.dat"] = std::string(kRampFileSize + 5, 'z');
  files.content["/d/a.xls"] = std::string(20000, 'z');
  dialogs.answers = {"/d/a.dat", "/d/a.dat", "/d/a.dat"};
  boxes.answers = {BoxButton::Cancel, BoxButton::No, BoxButton::Yes};
  Face().cmdRampSave.Click();  // Cancel shows the dialog again, No writes over the file without cutting it.
  ASSERT_THAT(boxes.shown, SizeIs(2));
  EXPECT_EQ(boxes.shown[0].text, OnDialog() ? "Do you want to change a current file to  /d/a.dat?"
                                            : "Do you want to change with /d/a.dat?");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Question);
  EXPECT_THAT(boxes.shown[0].buttons, ElementsAre(BoxButton::Yes, BoxButton::No, BoxButton::Cancel));
  EXPECT_EQ(files.content["/d/a.dat"].substr(kRampFileSize), "zzzzz");
  EXPECT_EQ(files.content["/d/a.dat"].substr(0, 3),
            "\x01\x00"s
            "0");
  Face().cmdRampSave.Click();  // Yes deletes it first. The companion is never asked about and never cut.
  EXPECT_EQ(files.content["/d/a.dat"].size(), kRampFileSize);
  EXPECT_EQ(files.content["/d/a.xls"].size(), 20000U);
  EXPECT_EQ(files.content["/d/a.xls"].substr(0, 14), "RampIndex = 0\r");
}

TEST_P(RampTransferOn, AFileThatCannotBeWrittenEndsTheSave) {
  files.unwritable = {"full.dat"};
  dialogs.answers = {"full.dat"};
  Face().cmdRampSave.Click();
  ASSERT_THAT(boxes.shown, SizeIs(1));
  EXPECT_EQ(boxes.shown[0].text, "full.dat: No space left on device");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_FALSE(files.Exists("full.xls"));
}

TEST_P(RampTransferOn, ACompanionThatCannotBeWrittenIsTold) {
  files.unwritable = {"full.xls"};
  dialogs.answers = {"full.dat"};
  Face().cmdRampSave.Click();
  ASSERT_THAT(boxes.shown, SizeIs(1));
  EXPECT_EQ(boxes.shown[0].text, "full.xls: No space left on device");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(files.content.at("full.dat").size(), kRampFileSize);
}

TEST_P(RampTransferOn, FilesNeedNoTestMode) {
  state.reply.TargetMode = "";
  dialogs.answers = {"a.dat", "a.dat"};
  Face().cmdRampSave.Click();
  state.ramp.RampTable[0][0] = "9";
  Face().cmdRampLoad.Click();
  EXPECT_EQ(Face().txtUP[0]->Text(), "0");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_P(RampTransferOn, ALoadShowsTheTableBeforeTheRecordHasIt) {
  Face().optTarget.Select();
  state.ramp.RampTable[0][15] = "32";
  Integer inRecord = -1;
  boxes.whileOpen = [&](const Box&) { inRecord = state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[1]; };
  Face().cmdRampLoad.Click();
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Input the number 0~31 without blank."));
  EXPECT_EQ(inRecord, 0);
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[15], 32) << "a number is a number for the record";
}

TEST_P(RampTransferOn, SavesAllTablesToTheTargetWithCommas) {
  Face().optTarget.Select();
  Face().txtUP[0]->SetText("31");  // An edit that was not stored is not sent.
  Face().cmdRampSave.Click();
  const auto lines = Commands();
  ASSERT_THAT(lines, SizeIs(31));
  EXPECT_EQ(lines[0],
            "ttw 0 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,"
            "16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31,");
  EXPECT_EQ(lines[30],
            "ttw 30 30,31,0,1,2,3,4,5,6,7,8,9,10,11,12,13,"
            "14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,");
  EXPECT_EQ(serial.commands.at(30).data.size(), 33U);
  EXPECT_THAT(Shown(), ElementsAre(OnDialog() ? "Alarm, information: 31 Ramp Table are saved completely."
                                              : "Alarm, information: 31 Ramp Tables are saved completely."));
  EXPECT_THAT(dialogs.shown, IsEmpty());
}

TEST_P(RampTransferOn, TwoFailedTablesEndWithTheTextOfACompleteSave) {
  Face().optTarget.Select();
  FailCommands({3, 30});
  Face().cmdRampSave.Click();
  EXPECT_THAT(serial.commands, SizeIs(31)) << "no table is sent twice";
  if (OnDialog()) {
    EXPECT_THAT(
        Shown(),
        ElementsAre("Warning, stop: 3th Ramp Table is not saved.3th Ramp table should be tried to save again",
                    "Warning, stop: 30th Ramp Table is not saved.30th Ramp table should be tried to save again",
                    "Alarm, information: 31 Ramp Table are saved completely."));
  } else {
    EXPECT_THAT(Shown(),
                ElementsAre("Warning, stop: 3th Ramp Table is not save normally.3th Ramp Table must be saved again",
                            "Warning, stop: 30th Ramp Table is not save normally.30th Ramp Table must be saved again",
                            "Alarm, information: 31 Ramp Tables are saved completely."));
  }
}

TEST_P(RampTransferOn, TheThirdFailedTableEndsTheSave) {
  Face().optTarget.Select();
  FailCommands({0, 4, 9});
  Face().cmdRampSave.Click();
  EXPECT_THAT(serial.commands, SizeIs(10));
  const auto shown = Shown();
  ASSERT_THAT(shown, SizeIs(4));
  EXPECT_EQ(shown[3], OnDialog() ? "Alarm, information: Ramp Table is not saved completely. Try again"
                                 : "Alarm, information: There are lots of Error with saving, So save again.");
}

TEST_P(RampTransferOn, ATableThatIsNoNumberIsNotSentAndTheSaveGoesOn) {
  Face().optTarget.Select();
  state.ramp.RampTable[1][0] = "7x";
  Face().cmdRampSave.Click();
  EXPECT_THAT(serial.commands, SizeIs(30));
  EXPECT_THAT(Shown(), SizeIs(1));
}

TEST_P(RampTransferOn, OutsideTestModeATargetSaveDoesNothing) {
  Face().optTarget.Select();
  state.reply.TargetMode = "";
  Face().cmdRampSave.Click();
  EXPECT_THAT(journal.Lines(), IsEmpty());
}

TEST_P(RampTransferOn, ATargetLoadAsksNothingOfTheTargetAndCopiesTheTableOverTheRecord) {
  Face().optTarget.Select();
  state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[3] = 99;  // As a calibration may have put it there.
  state.ramp.RampTable[0][0] = "5";
  Face().cmdRampLoad.Click();
  EXPECT_THAT(Commands(), IsEmpty());
  EXPECT_THAT(dialogs.shown, IsEmpty());
  EXPECT_EQ(Face().txtUP[0]->Text(), "5");
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[0], 5);
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[3], 3);
  EXPECT_EQ(state.rf.RFParams.BAND[1].ramp_tables[15].ramp_down[15], 29);
  EXPECT_FALSE(state.reply.PlainReplyMode);
}

TEST_P(RampTransferOn, WithoutAModeLoadRefreshesAndSaveDoesNothing) {
  state.ramp.RampStorageMode = "";
  state.ramp.RampTable[0][0] = "5";
  Face().cmdRampLoad.Click();
  Face().cmdRampSave.Click();
  EXPECT_EQ(Face().txtUP[0]->Text(), "5");
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[0].ramp_up[0], 5);
  EXPECT_THAT(dialogs.shown, IsEmpty());
  EXPECT_THAT(Commands(), IsEmpty());
}

TEST_P(RampTransferOn, LoadWithoutAnIndexStillCopiesTheTables) {
  Face().txtRampTableIndex.SetText("");
  Face().optTarget.Select();
  Face().cmdRampLoad.Click();
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[2].ramp_up[0], 2);
  EXPECT_THAT(boxes.shown, IsEmpty());
}

}  // namespace
}  // namespace orvane::test
