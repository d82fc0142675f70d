#include "panel_desk.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PanelInputs : public LoadedPanelDesk {};

struct FilteredBox {
  TextBox FrmAutoCal::*box;
  std::string allowed;
  std::string resetText;
};

const std::vector<FilteredBox>& FilteredBoxes() {
  static const std::vector<FilteredBox> boxes{
      {&FrmAutoCal::txtARFCN, "", "62"},
      {&FrmAutoCal::txtdcsarfcn, "", "699"},
      {&FrmAutoCal::txtfreqOffset, "", "699"},  // Not its default, "67".
      {&FrmAutoCal::txtAutoCalAGCARFCN, "", "40"},
      {&FrmAutoCal::txtAutoCalGMAGICARFCN, "", "700"},
      {&FrmAutoCal::txtinitialDAC, "", "750"},
      {&FrmAutoCal::txtAutoCalAFC, "-", "-1180"},
      {&FrmAutoCal::txtAutocalSetPointIL, "-.", "-48"},
      {&FrmAutoCal::txtLoss, "-.", "-0.5"},
      {&FrmAutoCal::txtDCSLoss, "-.", "-0.5"},
      {&FrmAutoCal::txtRxCableLossGSM, "-.", "-0.5"},
      {&FrmAutoCal::txtRxCableLossDCS, "-.", "-0.5"},
      {&FrmAutoCal::txtErrorRate, "-.", "0.1"},
      {&FrmAutoCal::txtPowerIndexLevel, "./", "13"},
  };
  return boxes;
}

TEST_F(PanelInputs, EveryRefusedCharacterResetsItsBox) {
  for (const FilteredBox& row : FilteredBoxes()) {
    TextBox& box = panel.*row.box;
    SCOPED_TRACE(box.Name());
    for (int code = 32; code <= 126; ++code) {
      const char c = static_cast<char>(code);
      const bool passes = (c >= '0' && c <= '9') || row.allowed.find(c) != std::string::npos;
      const std::string typed = std::string("1") + c + "2";
      box.SetText(typed);
      EXPECT_EQ(box.Text(), passes ? typed : row.resetText);
      if (passes) {
        EXPECT_THAT(Warnings(), IsEmpty()) << c;
      } else {
        EXPECT_THAT(Warnings(), ElementsAre("Input the number without blank.")) << c;
      }
    }
  }
}

TEST_F(PanelInputs, TheFiftyOneHangulLettersAreRefusedAndOtherWideCharactersAreNotTested) {
  struct Case {
    std::string typed;
    bool passes;
  };
  for (const Case& row : {Case{"\xE3\x84\xB1", false},    // U+3131, the first letter.
                          Case{"\xE3\x85\xA3", false},    // U+3163, the last one.
                          Case{"\xE3\x84\xB0", true},     // U+3130.
                          Case{"\xE3\x85\xA4", true},     // U+3164.
                          Case{"\xEA\xB0\x80", true}}) {  // U+AC00, a whole syllable.
    panel.txtARFCN.SetText(row.typed);
    EXPECT_EQ(panel.txtARFCN.Text(), row.passes ? row.typed : "62");
    EXPECT_EQ(Warnings().empty(), row.passes);
  }
}

TEST_F(PanelInputs, AnEmptiedBoxIsNotJudged) {
  panel.txtARFCN.SetText("");
  EXPECT_EQ(panel.txtARFCN.Text(), "");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PanelInputs, BoxesWithoutARuleTakeAnything) {
  for (TextBox* box : {&panel.txtAutoCalPM, &panel.txtGMAGICGSM900F71, &panel.txtPeakPower, &panel.txtTXP}) {
    box->SetText("a b");
    EXPECT_EQ(box->Text(), "a b");
  }
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PanelInputs, AListIsCheckedOnAClickAndNotWhileTyping) {
  struct Case {
    ComboBox FrmAutoCal::*list;
    std::string resetText;
  };
  for (const Case& row : {Case{&FrmAutoCal::ComboFunction, "CW"}, Case{&FrmAutoCal::comboOffset, "Average"}}) {
    ComboBox& list = panel.*row.list;
    SCOPED_TRACE(list.Name());
    list.SetText("odd");
    EXPECT_EQ(list.Text(), "odd");
    EXPECT_THAT(Warnings(), IsEmpty());
    list.Click();
    EXPECT_EQ(list.Text(), row.resetText);
    EXPECT_THAT(Warnings(), ElementsAre("Input a item in the list."));
    for (std::size_t i = 0; i < list.Items().size(); ++i) {
      list.Pick(i);
      EXPECT_EQ(list.Text(), list.Items()[i]);
    }
    EXPECT_THAT(Warnings(), IsEmpty());
  }
}

TEST_F(PanelInputs, TheReceiveLossSpinsCountTenths) {
  panel.updRxCableLossGSM.StepBy(-1);
  EXPECT_EQ(panel.txtRxCableLossGSM.Text(), "-0.6");
  panel.updRxCableLossDCS.MoveTo(-120);
  EXPECT_EQ(panel.txtRxCableLossDCS.Text(), "-12");
  panel.updRxCableLossDCS.MoveTo(0);
  EXPECT_EQ(panel.txtRxCableLossDCS.Text(), "0");
  EXPECT_THAT(Warnings(), IsEmpty());
}

TEST_F(PanelInputs, TypingDoesNotMoveAReceiveLossSpin) {
  panel.txtRxCableLossGSM.SetText("-3");
  panel.updRxCableLossGSM.StepBy(-1);
  EXPECT_EQ(panel.txtRxCableLossGSM.Text(), "-0.6");
}

TEST_F(PanelInputs, TheTransmitLossSpinsStepTheirBoxByWholeDecibels) {
  panel.txtLoss.SetText("-3");
  panel.updLoss.StepBy(-1);
  EXPECT_EQ(panel.txtLoss.Text(), "-4");
  panel.txtDCSLoss.SetText("-199");
  panel.updDCSLoss.StepBy(-2);
  EXPECT_EQ(panel.txtDCSLoss.Text(), "-200");
}

}  // namespace
}  // namespace orvane::test
