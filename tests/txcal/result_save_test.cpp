#include "txcal/result_save.h"

#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

struct SaveDesk : test::TxDesk {
  SaveDesk() {
    save.Connect();
    state.rf.RFParams.rf_revision = 8240;
    state.rf.RFParams.BAND[0].tx_Level[5].apc = 601;
  }
  void Save() {
    Note(RunStep::Save);
    outcome = Act([this] { panel.cmdAutoCalResultSave.Click(); });
  }

  ParameterTransfer transfer{panels.downLoad, panels.autoCal, state.rf, state.cal, state.reply, link,
                             state.report,    boxes,          dialogs,  files};
  ResultSave save{panels.autoCal, panels.downLoad, state.cal, state.rf, link,
                  transfer,       state.report,    boxes,     dialogs,  files};
};

using ResultSaveRun = SaveDesk;

TEST_F(ResultSaveRun, TheAutoBoxDecidesWhetherTheButtonCanBePressed) {
  EXPECT_TRUE(panel.chkAutoSaveMode.Checked());
  EXPECT_TRUE(panel.cmdAutoCalResultSave.Enabled()) << "the panel's load enables it last";
  op.Check(panel.chkAutoSaveMode, false);
  EXPECT_TRUE(panel.cmdAutoCalResultSave.Enabled());
  op.Check(panel.chkAutoSaveMode, true);
  EXPECT_FALSE(panel.cmdAutoCalResultSave.Enabled());
}

TEST_F(ResultSaveRun, WritesTheImageToTheTargetIn57Chunks) {
  Save();
  const auto commands = Commands();
  ASSERT_THAT(commands, SizeIs(2 + 57 + 1));
  EXPECT_EQ(commands[0], "spw 5 0");
  EXPECT_EQ(commands[1], "spw 1 0");
  EXPECT_THAT(commands[2], StartsWith("stw 3 0x"));
  EXPECT_EQ(commands.back(), "se 1");
  EXPECT_THAT(dialogs.shown, IsEmpty());
  EXPECT_THAT(files.content, IsEmpty());
  EXPECT_EQ(Flaws(), "");
}

TEST_F(ResultSaveRun, AStopIsHeardBetweenTwoPiecesAndNothingIsCommitted) {
  int pieces = 0;
  serial.answer = [&](const test::SentCommand& command) {
    if (command.operation == 82 && ++pieces == 57) op.Click(panel.cmdAutoCalStop);
    return test::PaddedReply(command.operation, 0);
  };
  Save();
  EXPECT_EQ(pieces, 57);
  EXPECT_THAT(Commands().back(), StartsWith("stw 3 ")) << "behind the last piece, too, nothing is committed";
  EXPECT_TRUE(cal.saveStopped);
  EXPECT_EQ(Flaws(), "Stopped while the EEPROM was written: nothing was committed.");

  serial.answer = [](const test::SentCommand& command) { return test::PaddedReply(command.operation, 0); };
  Save();
  EXPECT_FALSE(cal.saveStopped);
  EXPECT_EQ(Commands().back(), "se 1");
}

TEST_F(ResultSaveRun, AStopThatIsWithdrawnOrThatAFailureAskedForStopsNoSave) {
  int pieces = 0;
  serial.answer = [&](const test::SentCommand& command) {
    const bool piece = command.operation == 82;
    if (piece && ++pieces == 3) {
      op.Click(panel.cmdAutoCalStop);
      op.Click(panel.cmdAutoCalStop);
    }
    return test::PaddedReply(command.operation, piece && pieces == 5 ? 1 : 0);
  };
  Save();
  EXPECT_TRUE(cal.CalStopRequested);
  EXPECT_FALSE(cal.saveStopped);
  EXPECT_EQ(Commands().back(), "se 1");
  EXPECT_THAT(Flaws(), HasSubstr("EEPROM bytes 128 to 159 were refused with status 1"));
}

TEST_F(ResultSaveRun, ATargetThatHasDiedEndsTheSaveAfterFivePieces) {
  int sent = 0;
  serial.answer = [&](const test::SentCommand& command) {
    return ++sent > 10 ? std::string() : test::PaddedReply(command.operation, 0);
  };
  const TimePoint start = loop.Now();
  Save();
  EXPECT_EQ(outcome, "The Target does not answer.");
  EXPECT_EQ(sent, 15);
  EXPECT_LT(loop.Now() - start, std::chrono::seconds(14));
  EXPECT_THAT(Flaws(), HasSubstr("EEPROM bytes 256 to 415 brought no reply"));
}

TEST_F(ResultSaveRun, ACommandAroundThePiecesThatFailsIsToldWithWhatItMeans) {
  const struct {
    const char* command;
    const char* means;
  } rows[] = {{"spw 5 0", "\"spw 5 0\" brought no reply: what was written may have gone elsewhere."},
              {"spw 1 0", "\"spw 1 0\" brought no reply: all that was written may stand in the wrong place."},
              {"se 1", "\"se 1\" brought no reply: whether the EEPROM keeps what was written is not known."}};
  for (const auto& row : rows) {
    silent = {row.command};
    Save();
    EXPECT_EQ(Commands().back(), "se 1");
    EXPECT_EQ(Flaws(), row.means);
  }
}

TEST_F(ResultSaveRun, ARecordWithoutAWholeParameterFileIsSavedAndTold) {
  state.rf.recordIsWhole = false;
  Save();
  EXPECT_THAT(Commands(), SizeIs(2 + 57 + 1));
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(Flaws(), "The RF parameters stand on no whole parameter file: what the run did not calibrate is wrong.");
}

TEST_F(ResultSaveRun, ATargetOutOfTestModeIsLeftOutWithoutAWord) {
  state.reply.TargetMode = "";
  Save();
  EXPECT_THAT(Commands(), IsEmpty());
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(Flaws(), "The EEPROM was not written: the Target is not in test mode.");
}

TEST_F(ResultSaveRun, WritesTheFileThatWasChosenAtTheStartOfTheRun) {
  op.Select(panel.optSaveModeFile);
  cal.CalSaveFileName = "/results/unit.epm";
  cal.CalSaveFileOk = true;
  Save();
  EXPECT_THAT(dialogs.shown, IsEmpty());
  const std::string& text = files.content["/results/unit.epm"];
  EXPECT_THAT(text, StartsWith("rf_revision\t=\tRF_PASCAL_20\r\nlow_agc_noise_thr\t=\t0\r\n"));
  EXPECT_THAT(text, HasSubstr("BAND(0).tx_Level(0).apc (5)\t=\t601\r\n"));
  EXPECT_THAT(Commands(), IsEmpty());
  EXPECT_EQ(Flaws(), "");
}

TEST_F(ResultSaveRun, WritesBoth) {
  op.Select(panel.optSaveModeEEPROMFile);
  cal.CalSaveFileName = "/results/unit.epm";
  cal.CalSaveFileOk = true;
  Save();
  EXPECT_TRUE(files.content.contains("/results/unit.epm"));
  EXPECT_THAT(Commands(), SizeIs(60));
}

TEST_F(ResultSaveRun, AFileThatCannotBeOpenedLeavesTheEepromOutToo) {
  op.Select(panel.optSaveModeEEPROMFile);
  for (const char* name : {"/locked/unit.epm", ""}) {
    files.unopenable = {"/locked/unit.epm", ""};
    cal.CalSaveFileName = name;
    cal.CalSaveFileOk = true;
    boxes.shown.clear();
    Save();
    ASSERT_THAT(boxes.shown, SizeIs(1));
    EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
    EXPECT_THAT(Commands(), IsEmpty());
    EXPECT_EQ(Flaws(), "No file was written: " + boxes.shown[0].text);
  }
}

TEST_F(ResultSaveRun, AFileThatCannotBeWrittenIsABoxAndTheEepromIsWritten) {
  op.Select(panel.optSaveModeEEPROMFile);
  files.unwritable = {"/full/unit.epm"};
  cal.CalSaveFileName = "/full/unit.epm";
  cal.CalSaveFileOk = true;
  Save();
  EXPECT_FALSE(outcome.has_value()) << *outcome;
  EXPECT_THAT(boxes.Texts(), ElementsAre("/full/unit.epm: No space left on device"));
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_THAT(Commands(), SizeIs(60));
  EXPECT_EQ(Flaws(), "No file was written: /full/unit.epm: No space left on device");
}

TEST_F(ResultSaveRun, YesIsForOneFileAndOneThatFailedKeepsIt) {
  op.Check(panel.chkAutoSaveMode, false);
  op.Select(panel.optSaveModeFile);
  const std::string longer(100000, 'x');
  files.content["/a.epm"] = longer;
  files.unwritable = {"/a.epm"};
  dialogs.answers = {"/a.epm"};
  boxes.answers = {BoxButton::Yes};
  Save();
  EXPECT_EQ(files.content["/a.epm"], longer) << "until the new one is whole";
  // The name is kept for runs that ask for none.
  op.Check(panel.chkAutoSaveMode, true);
  panel.cmdAutoCalResultSave.SetEnabled(true);
  files.unwritable.clear();
  Save();
  EXPECT_LT(files.content["/a.epm"].size(), longer.size());
  files.content["/a.epm"] = longer;
  Save();
  EXPECT_EQ(files.content["/a.epm"].size(), longer.size()) << "nobody was asked about this one";
}

TEST_F(ResultSaveRun, ADamagedParameterFileIsToldByTheSave) {
  state.rf.damage = "/data/TI532.epm holds 9 values, not 1857.";
  Save();
  EXPECT_THAT(Commands(), SizeIs(60));
  EXPECT_EQ(Flaws(), "/data/TI532.epm holds 9 values, not 1857.");
}

TEST_F(ResultSaveRun, AsksForTheFileWithAutoUnchecked) {
  op.Check(panel.chkAutoSaveMode, false);
  op.Select(panel.optSaveModeEEPROMFile);
  dialogs.answers = {"/results/new.epm"};
  Save();
  ASSERT_THAT(dialogs.shown, SizeIs(1));
  EXPECT_TRUE(dialogs.shown[0].save);
  EXPECT_EQ(dialogs.shown[0].dialog.title, "RF Parameters Save");
  EXPECT_EQ(dialogs.shown[0].dialog.defaultExtension, "epm");
  EXPECT_TRUE(files.content.contains("/results/new.epm"));
  EXPECT_EQ(cal.CalSaveFileName, "/results/new.epm");
  EXPECT_THAT(Commands(), SizeIs(60));
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(ResultSaveRun, CancelInTheDialogEndsTheOperation) {
  op.Check(panel.chkAutoSaveMode, false);
  op.Select(panel.optSaveModeEEPROMFile);
  cal.CalSaveFileName = "/results/before.epm";
  Save();
  EXPECT_THAT(files.content, IsEmpty());
  EXPECT_THAT(Commands(), IsEmpty());
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(cal.CalSaveFileName, "/results/before.epm");
  EXPECT_EQ(Flaws(), "No file was written: none was chosen.");
}

TEST_F(ResultSaveRun, AsksBeforeAFileIsChanged) {
  op.Check(panel.chkAutoSaveMode, false);
  op.Select(panel.optSaveModeFile);
  const std::string longer(100000, 'x');
  const struct {
    std::vector<BoxButton> answers;
    std::vector<std::optional<std::string>> names;
    bool keepsTail;
  } rows[] = {{{BoxButton::Yes}, {"/a.epm"}, false},
              {{BoxButton::No}, {"/a.epm"}, true},
              {{BoxButton::Cancel, BoxButton::Yes}, {"/a.epm", "/a.epm"}, false}};
  for (const auto& row : rows) {
    files.content["/a.epm"] = longer;
    boxes.shown.clear();
    dialogs.shown.clear();
    boxes.answers.assign(row.answers.begin(), row.answers.end());
    dialogs.answers.assign(row.names.begin(), row.names.end());
    Save();
    EXPECT_EQ(boxes.shown[0].text, "Do you want to change a current file to /a.epm?");
    EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Question);
    EXPECT_EQ(dialogs.shown.size(), row.names.size());
    EXPECT_THAT(files.content["/a.epm"], StartsWith("rf_revision"));
    EXPECT_EQ(files.content["/a.epm"].size() == longer.size(), row.keepsTail);
  }
}

TEST_F(ResultSaveRun, AFileThatCannotBeReplacedEndsTheOperation) {
  op.Check(panel.chkAutoSaveMode, false);
  op.Select(panel.optSaveModeEEPROMFile);
  files.content["/a.epm"] = "old";
  files.irreplaceable = {"/a.epm"};
  dialogs.answers = {"/a.epm"};
  boxes.answers = {BoxButton::Yes};
  Save();
  ASSERT_THAT(boxes.shown, SizeIs(2));
  EXPECT_EQ(boxes.shown[1].icon, BoxIcon::Exclamation);
  EXPECT_EQ(files.content["/a.epm"], "old");
  EXPECT_THAT(Commands(), IsEmpty());
  EXPECT_EQ(Flaws(), "No file was written: none was chosen.");
}

}  // namespace
}  // namespace orvane
