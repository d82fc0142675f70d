#include "rxcal/pattern_editor.h"

#include <gmock/gmock.h>

#include "rxcal/mp_panel.h"
#include "support/rig.h"

namespace orvane::test {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct PatternEditorTest : ::testing::Test, Rig {
  PatternEditorTest() {
    editor.Connect();
    face.Touch();
  }

  std::string Cell(std::size_t pattern, std::size_t row) const {
    return state.pattern.APCDACPatternTable[pattern][row];
  }
  /// Loads a pattern file with that content.
  void Load(const std::string& content) {
    files.content["/data/mp.txt"] = content;
    dialogs.answers.emplace_back("/data/mp.txt");
    EXPECT_EQ(op.Click(face.cmdPatternLoad), std::nullopt);
  }
  /// Texts of the boxes since the last call, which must be stop boxes titled "Warning".
  std::vector<std::string> Warnings() {
    EXPECT_THAT(boxes.shown, Each(AllOf(Field(&Box::title, "Warning"), Field(&Box::icon, BoxIcon::Stop))));
    std::vector<std::string> texts = boxes.Texts();
    boxes.shown.clear();
    return texts;
  }

  FrmMPAutoCal& face = panels.mpAutoCal;
  PatternEditor editor{panels.mpAutoCal, state.pattern, files, boxes, dialogs};
};

TEST_F(PatternEditorTest, ThePanelLoadsWithThreeEqualPatternsThatFallBy50) {
  for (std::size_t pattern = 0; pattern < 3; ++pattern) {
    for (std::size_t row = 0; row <= 30; ++row) {
      const std::size_t expected = row <= 14 ? 750 - 50 * row : 800 - 50 * (row - 15);
      EXPECT_EQ(Cell(pattern, row), std::to_string(expected)) << pattern << " " << row;
    }
  }
}

TEST_F(PatternEditorTest, ALevelShowsItsCell) {
  op.Type(face.txtMPLevel, "7");
  EXPECT_EQ(face.txtMPDAC.Text(), "650");
  op.Type(face.txtMPLevel, "19");
  EXPECT_EQ(face.txtMPDAC.Text(), "50");
  op.Select(face.optDCSPattern);
  op.Type(face.txtMPLevel, "0");
  EXPECT_EQ(face.txtMPDAC.Text(), "800");
  op.Type(face.txtMPLevel, "15");
  EXPECT_EQ(face.txtMPDAC.Text(), "50");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PatternEditorTest, ASetValueStandsInItsPatternOnly) {
  op.Type(face.txtMPPattern, "1");
  op.Type(face.txtMPDAC, "601");
  op.Click(face.cmdMPSet);
  EXPECT_EQ(Cell(0, 0), "750");
  EXPECT_EQ(Cell(1, 0), "601");
  EXPECT_EQ(Cell(2, 0), "750");
  op.Type(face.txtMPLevel, "6");
  EXPECT_EQ(face.txtMPDAC.Text(), "700");
  op.Type(face.txtMPLevel, "5");
  EXPECT_EQ(face.txtMPDAC.Text(), "601");
  op.Type(face.txtMPPattern, "2");
  EXPECT_EQ(face.txtMPDAC.Text(), "601") << "a pattern alone shows nothing anew";
}

TEST_F(PatternEditorTest, Level15OfDcsIsTheLastRow) {
  op.Select(face.optDCSPattern);
  op.Type(face.txtMPLevel, "15");
  op.Type(face.txtMPDAC, "61");
  op.Click(face.cmdMPSet);
  EXPECT_EQ(Cell(0, 30), "61");
  op.Type(face.txtMPLevel, "0");
  op.Type(face.txtMPDAC, "801");
  op.Click(face.cmdMPSet);
  EXPECT_EQ(Cell(0, 15), "801");
}

TEST_F(PatternEditorTest, APatternThatIsNoneIsNeitherShownNorStoredAndSaysNothing) {
  const PatternState before = state.pattern;
  for (const char* pattern : {"3", "", "99999", "가"}) {
    op.Type(face.txtMPPattern, pattern);
    op.Type(face.txtMPDAC, "123");
    op.Type(face.txtMPLevel, "6");
    EXPECT_EQ(face.txtMPDAC.Text(), "123") << pattern;
    EXPECT_EQ(op.Click(face.cmdMPSet), std::nullopt) << pattern;
    EXPECT_EQ(state.pattern.APCDACPatternTable, before.APCDACPatternTable) << pattern;
    op.Type(face.txtMPLevel, "5");
  }
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PatternEditorTest, ATextThatIsNoLevelOfTheBandIsReset) {
  constexpr const char* kGsm = "Input the number which is between 5 and 19 without blank.";
  constexpr const char* kDcs = "Input the number which is between 0 and 15 without blank.";
  for (const char* text : {"4", "20", "1", "05", " 7", "7.0", "-5", "x", "ㅁ", ""}) {
    op.Type(face.txtMPLevel, "6");
    op.Type(face.txtMPLevel, text);
    EXPECT_THAT(Warnings(), ElementsAre(kGsm)) << text;
    EXPECT_EQ(face.txtMPLevel.Text(), "5");
    EXPECT_EQ(face.txtMPDAC.Text(), "750") << "the cell of the reset level";
  }
  op.Select(face.optDCSPattern);
  for (const char* text : {"16", "00", "15 ", "-1", "x", "ㅁ", ""}) {
    op.Type(face.txtMPLevel, "6");
    op.Type(face.txtMPLevel, text);
    EXPECT_THAT(Warnings(), ElementsAre(kDcs)) << text;
    EXPECT_EQ(face.txtMPLevel.Text(), "0");
    EXPECT_EQ(face.txtMPDAC.Text(), "800");
  }
}

TEST_F(PatternEditorTest, AnOptionSetsTheRangesOfTheSpinsAndLeavesTheBoxes) {
  op.Select(face.optDCSPattern);
  EXPECT_EQ(face.updMPLevel.Min(), 0);
  EXPECT_EQ(face.updMPLevel.Max(), 15);
  EXPECT_EQ(face.txtMPLevel.Text(), "5");
  EXPECT_EQ(face.txtMPDAC.Text(), "750");
  op.Select(face.optGSMPattern);
  EXPECT_EQ(face.updMPLevel.Min(), 5);
  EXPECT_EQ(face.updMPLevel.Max(), 19);
  for (OptionButton* option : {&face.optGSMPattern, &face.optDCSPattern}) {
    face.updMPDAC.SetRange(1, 2);
    op.Select(*option);
    EXPECT_EQ(face.updMPDAC.Min(), 0);
    EXPECT_EQ(face.updMPDAC.Max(), 1023);
  }
}

TEST_F(PatternEditorTest, TheSpinsStepTheirBoxes) {
  op.Step(face.updMPLevel, 1);
  EXPECT_EQ(face.txtMPLevel.Text(), "6");
  EXPECT_EQ(face.txtMPDAC.Text(), "700");
  op.Step(face.updMPLevel, -9);
  EXPECT_EQ(face.txtMPLevel.Text(), "5");
  op.Step(face.updMPPattern, 9);
  EXPECT_EQ(face.txtMPPattern.Text(), "2");
  op.Step(face.updMPDAC, 1);
  EXPECT_EQ(face.txtMPDAC.Text(), "751");
}

TEST_F(PatternEditorTest, SetNeedsALevelAndAValue) {
  const PatternState before = state.pattern;
  op.Type(face.txtMPDAC, "");
  op.Click(face.cmdMPSet);
  EXPECT_THAT(Warnings(), ElementsAre("Input Pattern Value."));
  face.txtMPLevel.onChange = nullptr;
  op.Type(face.txtMPDAC, "7");
  op.Type(face.txtMPLevel, "");
  op.Click(face.cmdMPSet);
  EXPECT_THAT(Warnings(), ElementsAre("Input Pattern Value."));
  EXPECT_EQ(state.pattern.APCDACPatternTable, before.APCDACPatternTable);
}

TEST_F(PatternEditorTest, ALevelLeftByTheOtherBandIsNotStored) {
  const PatternState before = state.pattern;
  op.Select(face.optDCSPattern);
  op.Type(face.txtMPLevel, "4");
  op.Select(face.optGSMPattern);
  op.Click(face.cmdMPSet);
  EXPECT_THAT(Warnings(), ElementsAre("GSM Power Level should be equal or higher then 5."));

  op.Type(face.txtMPLevel, "16");
  op.Select(face.optDCSPattern);
  EXPECT_NE(op.Click(face.cmdMPSet), std::nullopt) << "row 31 is none";
  EXPECT_EQ(state.pattern.APCDACPatternTable, before.APCDACPatternTable);
}

TEST_F(PatternEditorTest, SetComplainsOfItsBoxesAlsoWithAPatternThatIsNone) {
  op.Type(face.txtMPPattern, "3");
  op.Type(face.txtMPDAC, "");
  op.Click(face.cmdMPSet);
  EXPECT_THAT(Warnings(), ElementsAre("Input Pattern Value."));
  op.Type(face.txtMPDAC, "7");
  op.Select(face.optDCSPattern);
  op.Type(face.txtMPLevel, "4");
  op.Select(face.optGSMPattern);
  op.Click(face.cmdMPSet);
  EXPECT_THAT(Warnings(), ElementsAre("GSM Power Level should be equal or higher then 5."));
}

TEST_F(PatternEditorTest, LoadAsksWithItsTitleAndAnEmptyName) {
  Load("1 2 3\r\n");
  op.Click(face.cmdPatternLoad);
  ASSERT_EQ(dialogs.shown.size(), 2U);
  for (const auto& shown : dialogs.shown) {
    EXPECT_FALSE(shown.save);
    EXPECT_EQ(shown.dialog.title, "Pattern Open for MP");
    EXPECT_EQ(shown.dialog.fileName, "");
    EXPECT_EQ(shown.dialog.filter, "");
    EXPECT_EQ(shown.dialog.defaultExtension, "");
  }
  EXPECT_EQ(dialogs.shown[0].dialog.initialFolder, "");
  EXPECT_EQ(dialogs.shown[1].dialog.initialFolder, "/data") << "where the last one was";
}

TEST_F(PatternEditorTest, ALoadedLineGivesALevelOfEachPattern) {
  Load("11 12 13\r\n  21\t22   23 24\n\t\r\n41\t42");
  EXPECT_THAT((std::vector{Cell(0, 0), Cell(1, 0), Cell(2, 0)}), ElementsAre("11", "12", "13"));
  EXPECT_THAT((std::vector{Cell(0, 1), Cell(1, 1), Cell(2, 1)}), ElementsAre("21", "22", "23"));
  EXPECT_THAT((std::vector{Cell(0, 2), Cell(1, 2), Cell(2, 2)}), ElementsAre("", "", ""))
      << "a line of blanks counts";
  EXPECT_THAT((std::vector{Cell(0, 3), Cell(1, 3), Cell(2, 3)}), ElementsAre("41", "42", "")) << "a shorter line";
  EXPECT_THAT((std::vector{Cell(0, 4), Cell(1, 4), Cell(2, 4)}), ElementsAre("550", "550", "550")) << "no line";
  EXPECT_EQ(Cell(2, 30), "50");
  EXPECT_EQ(face.txtMPDAC.Text(), "11");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PatternEditorTest, LinesBehindTheLastLevelLeaveNoTrace) {
  std::string content;
  for (int line = 0; line < 40; ++line) content += std::to_string(line) + " a b\n";
  Load(content);
  EXPECT_EQ(Cell(0, 0), "0");
  EXPECT_EQ(Cell(0, 30), "30");
  EXPECT_EQ(Cell(1, 0), "a");
  EXPECT_EQ(Cell(2, 30), "b");
}

TEST_F(PatternEditorTest, AFileReplacesOnlyTheLevelsThatItHas) {
  op.Type(face.txtMPLevel, "9");
  op.Type(face.txtMPDAC, "444");
  op.Click(face.cmdMPSet);
  op.Type(face.txtMPDAC, "445");
  Load("1 2 3\n");
  EXPECT_EQ(Cell(0, 4), "444");
  EXPECT_EQ(face.txtMPDAC.Text(), "444") << "the cell is shown anew";
  Load("");
  EXPECT_EQ(Cell(0, 0), "1");
}

TEST_F(PatternEditorTest, ALoadShowsNoCellForALevelLeftByTheOtherBand) {
  op.Select(face.optDCSPattern);
  op.Type(face.txtMPLevel, "4");
  op.Type(face.txtMPDAC, "123");
  op.Select(face.optGSMPattern);
  Load("1 2 3\n");
  EXPECT_EQ(Cell(0, 0), "1");
  EXPECT_EQ(face.txtMPDAC.Text(), "123");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(PatternEditorTest, AValueFromAFileIsJudgedWhenItIsShown) {
  MpPanel panel{panels.mpAutoCal, panels.autoCal, state.cal, link, boxes, [] {}};
  panel.Connect();
  Load("7x 2 3\n");
  EXPECT_EQ(Cell(0, 0), "7x") << "taken as it stands";
  EXPECT_THAT(Warnings(), ElementsAre("Input the number without blank."));
  EXPECT_EQ(face.txtMPDAC.Text(), "750");
}

TEST_F(PatternEditorTest, ACancelledLoadChangesNothing) {
  op.Type(face.txtMPDAC, "123");
  op.Click(face.cmdPatternLoad);
  EXPECT_EQ(face.txtMPDAC.Text(), "123");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(PatternEditorTest, AFileThatCannotBeOpenedShowsTheSystemsWords) {
  op.Type(face.txtMPDAC, "123");
  dialogs.answers.emplace_back("/data/none.txt");
  EXPECT_EQ(op.Click(face.cmdPatternLoad), std::nullopt);
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_THAT(boxes.shown[0].text, HasSubstr("No such file"));
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(face.txtMPDAC.Text(), "123");
  EXPECT_EQ(Cell(0, 0), "750");
}

TEST_F(PatternEditorTest, AFileThatCannotBeReadIsPassedOver) {
  files.unreadable.insert("/data/mp.txt");
  op.Type(face.txtMPDAC, "123");
  Load("1 2 3\n");
  EXPECT_EQ(Cell(0, 0), "750");
  EXPECT_EQ(face.txtMPDAC.Text(), "750");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

}  // namespace
}  // namespace orvane::test
