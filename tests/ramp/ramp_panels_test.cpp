#include "base/failure.h"
#include "ramp/ramp_boxes.h"
#include "ramp_desk.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RampDialog : public RampDesk {
 protected:
  void Rows(const std::string& up, const std::string& down) {
    for (std::size_t k = 0; k < 16; ++k) {
      state.ramp.RampTable[0][k] = up;
      state.ramp.RampTable[0][k + 16] = down;
    }
  }
};

TEST_F(RampDialog, ConnectingDoesNotCreateIt) {
  EXPECT_FALSE(panels.rampTable.Created());
  EXPECT_EQ(state.ramp.RampStorageMode, "");
}

TEST_F(RampDialog, OpensOnTable0WithBothSumsInOneColour) {
  struct Case {
    std::string up, down, upSum, downSum;
    Colour colour;
  };
  for (const Case& row : {Case{"8", "0", "128", "0", kGreen}, Case{"0", "8", "0", "128", kGreen},
                          Case{"8", "8", "128", "128", kGreen}, Case{"16", "16", "256", "256", kRed}}) {
    SCOPED_TRACE(row.upSum + " " + row.downSum);
    Rows(row.up, row.down);
    dialogEditor.Open();
    EXPECT_EQ(dialogFace.txtRampUpStatus.Text(), row.upSum);
    EXPECT_EQ(dialogFace.txtRampDownStatus.Text(), row.downSum);
    EXPECT_EQ(dialogFace.txtRampUpStatus.BackColor(), row.colour);
    EXPECT_EQ(dialogFace.txtRampDownStatus.BackColor(), row.colour);
  }
}

TEST_F(RampDialog, OpensInFileModeWhateverTheMainPanelShows) {
  mainFace.optTarget.Select();
  EXPECT_EQ(state.ramp.RampStorageMode, "Target");
  panels.rampTable.Show();
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_TRUE(mainFace.optTarget.Selected());
  EXPECT_EQ(dialogFace.txtRampTableIndex.Text(), "0");
  EXPECT_EQ(dialogFace.txtDN[15]->Text(), "31");
  dialogFace.optTarget.Select();
  EXPECT_EQ(state.ramp.RampStorageMode, "Target");
  mainFace.optFile.Select();
  EXPECT_EQ(state.ramp.RampStorageMode, "File") << "the mode is one, the options are two pairs";
}

TEST_F(RampDialog, OpensWithoutJudgingAValueThatIsOutOfRange) {
  Rows("8", "8");
  state.ramp.RampTable[0][0] = "40";
  panels.rampTable.Show();
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_EQ(dialogFace.txtRampUpStatus.Text(), "160");
  EXPECT_EQ(dialogFace.txtRampUpStatus.BackColor(), kGreen) << "the down sum is 128";
}

TEST_F(RampDialog, AnEmptyTableStopsItsOpening) {
  state.ramp = {};
  EXPECT_THROW(panels.rampTable.Show(), StationFailure);
  EXPECT_EQ(state.ramp.RampStorageMode, "File");
  EXPECT_EQ(dialogFace.txtUP[0]->Text(), "");
  EXPECT_EQ(dialogFace.txtRampUpStatus.Text(), "");
}

TEST_F(RampDialog, CloseHidesItAndKeepsItsState) {
  panels.rampTable.Show();
  dialogFace.optTarget.Select();
  dialogFace.txtRampTableIndex.SetText("20");
  panels.rampTable.cmdRampTableClose.Click();
  EXPECT_FALSE(panels.rampTable.Visible());
  panels.rampTable.Show();
  EXPECT_EQ(dialogFace.txtRampTableIndex.Text(), "20");
  EXPECT_EQ(state.ramp.RampStorageMode, "Target");
}

TEST_F(RampDialog, TheMainPanelsSumsAreShownByTheSameRule) {
  Rows("8", "7");
  ShowRampTable(state.ramp, 0, mainFace);
  EXPECT_EQ(mainFace.txtRampUpStatus.BackColor(), kGreen);
  EXPECT_EQ(mainFace.txtRampDownStatus.BackColor(), kRed) << "each box by itself";
  ShowRampSumsAsOpened(mainFace);
  EXPECT_EQ(mainFace.txtRampDownStatus.BackColor(), kGreen);
  EXPECT_EQ(mainFace.txtRampDownStatus.Text(), "112");
}

TEST(RampBoxes, NoTableBeyondTheThirtyFirstCanBeShown) {
  OrvaneMain main;
  EXPECT_THROW(ShowRampTable(RampState{}, 31, main.ramp), StationFailure);
  EXPECT_THROW(ShowRampTable(RampState{}, -1, main.ramp), StationFailure);
}

class RampDelay : public RampDesk {};

TEST_F(RampDelay, TakesDigitsAlone) {
  for (ComboBox* box : {&panels.main.cboDELU, &panels.main.cboDELD}) {
    SCOPED_TRACE(box->Name());
    box->SetText("0123456789");
    box->SetText("");
    EXPECT_THAT(Shown(), IsEmpty());
    for (const char* text : {"1 ", "-1", "1/", "1:", "a", "~", "\t", "\xE3\x84\xB1", "\xEA\xB0\x80"}) {
      box->SetText(text);
      EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Input the number without blank.")) << text;
      EXPECT_EQ(box->Text(), "0");
    }
    box->SetText("5\x7F");
    EXPECT_THAT(Shown(), IsEmpty()) << "code 127 is in neither range";
  }
}

TEST_F(RampDelay, ItsSetButtonDoesNothing) {
  OpenPort();
  panels.main.cboDELU.SetText("5");
  panels.main.cmdRampDelaySet.Click();
  EXPECT_THAT(journal.Lines(), IsEmpty());
  EXPECT_EQ(state.rf.RFParams.ramp_delay.up, 0);
}

}  // namespace
}  // namespace orvane::test
