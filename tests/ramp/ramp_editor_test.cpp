#include "base/failure.h"
#include "ramp/ramp_boxes.h"
#include "ramp_desk.h"

namespace orvane::test {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string kBadValue = "Warning, stop: Input the number 0~31 without blank.";
const std::string kBadIndex = "Warning, stop: Input the number 0~30 without blank.";

class RampEditorOn : public RampDesk, public ::testing::WithParamInterface<bool> {
 protected:
  RampEditorOn() { OpenPanels(); }
  [[nodiscard]] bool OnDialog() const { return GetParam(); }
  [[nodiscard]] RampEditorFace& Face() { return OnDialog() ? dialogFace : mainFace; }
};

INSTANTIATE_TEST_SUITE_P(Panels, RampEditorOn, ::testing::Bool(),
                         [](const auto& panel) { return panel.param ? "Dialog" : "Main"; });

TEST_P(RampEditorOn, AcceptsOnlyTheDecimalTextsFrom0To31) {
  TextBox& box = *Face().txtUP[3];
  for (int value = 0; value <= 31; ++value) box.SetText(std::to_string(value));
  EXPECT_THAT(Shown(), IsEmpty());
  for (const char* text : {"32", "07", " 7", "7 ", "7.0", "-1", "x", "+5"}) {
    box.SetText(text);
    EXPECT_THAT(Shown(), ElementsAre(kBadValue)) << text;
  }
}

TEST_P(RampEditorOn, ColoursASumByThePanelsOwnValue) {
  struct Case {
    std::string up;
    std::string sum;
    Colour main;
    Colour dialog;
  };
  for (const Case& row : {Case{"8", "128", kGreen, kRed}, Case{"16", "256", kRed, kGreen},
                          Case{"31", "496", kRed, kRed}, Case{"0", "0", kRed, kRed}}) {
    SCOPED_TRACE(row.sum);
    FillRow(Face().txtUP, row.up);
    EXPECT_EQ(Face().txtRampUpStatus.Text(), row.sum);
    EXPECT_EQ(Face().txtRampUpStatus.BackColor(), OnDialog() ? row.dialog : row.main);
    FillRow(Face().txtDN, row.up);
    EXPECT_EQ(Face().txtRampDownStatus.Text(), row.sum);
    EXPECT_EQ(Face().txtRampDownStatus.BackColor(), OnDialog() ? row.dialog : row.main);
  }
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_P(RampEditorOn, DoesNotJudgeARowWithAnEmptyBox) {
  FillRow(Face().txtUP, "8");
  Face().txtUP[0]->SetText("");
  Face().txtUP[1]->SetText("99");
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_EQ(Face().txtRampUpStatus.Text(), "128") << "the sum stays as it was";
  Face().txtUP[0]->SetText("8");
  EXPECT_THAT(Shown(), ElementsAre(kBadValue));
  EXPECT_EQ(Face().txtRampUpStatus.Text(), "128");
}

TEST_P(RampEditorOn, ShowsTheTableOfAnIndex) {
  Face().txtRampTableIndex.SetText("14");
  EXPECT_EQ(Face().lblRampIndex.Caption(), "GSM");
  EXPECT_EQ(Face().txtUP[0]->Text(), "14");
  EXPECT_EQ(Face().txtDN[15]->Text(), "13");
  Face().txtRampTableIndex.SetText("15");
  EXPECT_EQ(Face().lblRampIndex.Caption(), "DCS");
  EXPECT_EQ(Face().txtUP[0]->Text(), "15");
  EXPECT_EQ(Face().txtDN[0]->Text(), "31");
  Face().txtRampTableIndex.SetText("30");
  EXPECT_EQ(Face().txtUP[15]->Text(), "13");
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_P(RampEditorOn, RefusesOtherIndicesAndShowsTable0) {
  for (const char* text : {"31", "07", " 1", "-1", "x"}) {
    Face().txtRampTableIndex.SetText("30");
    Face().txtRampTableIndex.SetText(text);
    EXPECT_THAT(Shown(), ElementsAre(kBadIndex)) << text;
    EXPECT_EQ(Face().txtRampTableIndex.Text(), "0");
    EXPECT_EQ(Face().lblRampIndex.Caption(), "GSM");
    EXPECT_EQ(Face().txtUP[1]->Text(), "1");
  }
}

TEST_P(RampEditorOn, AnEmptiedIndexChangesNothing) {
  Face().txtRampTableIndex.SetText("20");
  Face().txtRampTableIndex.SetText("");
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_EQ(Face().lblRampIndex.Caption(), "DCS");
  EXPECT_EQ(Face().txtUP[0]->Text(), "20");
}

TEST_P(RampEditorOn, SpinsStepTheirBoxes) {
  Face().updRampTableIndex.StepBy(1);
  EXPECT_EQ(Face().txtRampTableIndex.Text(), "1");
  EXPECT_EQ(Face().txtUP[0]->Text(), "1");
  Face().updUP[2]->StepBy(1);
  EXPECT_EQ(Face().txtUP[2]->Text(), "4");
  Face().updDN[0]->StepBy(-1);
  EXPECT_EQ(Face().txtDN[0]->Text(), "16");
}

TEST_P(RampEditorOn, ATableWithABadValueIsToldOnceForEachBoxThatChanges) {
  state.ramp.RampTable[1][0] = "32";
  Face().txtRampTableIndex.SetText("1");
  EXPECT_THAT(Shown(), AllOf(SizeIs(16), Each(kBadValue))) << "the 16 up boxes; the down boxes are sound";
}

struct StoreCase {
  const char* index;
  std::size_t band;
  std::size_t table;
};

TEST_P(RampEditorOn, SetStoresTheBoxesInTheTableAndTheRecord) {
  for (const StoreCase& row :
       {StoreCase{"0", 0, 0}, StoreCase{"14", 0, 14}, StoreCase{"15", 1, 0}, StoreCase{"30", 1, 15}}) {
    SCOPED_TRACE(row.index);
    Face().txtRampTableIndex.SetText(row.index);
    FillRow(Face().txtUP, "31");
    FillRow(Face().txtDN, "9");
    Face().txtUP[15]->SetText("1");
    Face().cmdRampIndexset.Click();
    const auto& values = state.ramp.RampTable[static_cast<std::size_t>(std::stoi(row.index))];
    EXPECT_EQ(values[0], "31");
    EXPECT_EQ(values[15], "1");
    EXPECT_EQ(values[16], "9");
    EXPECT_EQ(values[31], "9");
    const RFParameter::Ramp& ramp = state.rf.RFParams.BAND[row.band].ramp_tables[row.table];
    EXPECT_EQ(ramp.ramp_up[0], 31);
    EXPECT_EQ(ramp.ramp_up[15], 1);
    EXPECT_EQ(ramp.ramp_down[0], 9);
    EXPECT_EQ(ramp.ramp_down[15], 9);
  }
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[15].ramp_up[0], 0) << "no index reaches it";
  EXPECT_EQ(state.rf.RFParams.BAND[0].ramp_tables[1].ramp_up[0], 0) << "only the table of the index is copied";
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_THAT(Commands(), IsEmpty()) << "nothing goes to the Target";
}

TEST_P(RampEditorOn, SetStoresASumThatNoColourAccepts) {
  FillRow(Face().txtUP, "31");
  FillRow(Face().txtDN, "31");
  Face().cmdRampIndexset.Click();
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_THAT(state.ramp.RampTable[0], Each("31"));
}

TEST_P(RampEditorOn, SetAsksForAnIndex) {
  Face().txtRampTableIndex.SetText("");
  Face().cmdRampIndexset.Click();
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Input Ramp Table Index."));
}

TEST_P(RampEditorOn, SetFailsOnAnIndexThatNoTableHas) {
  // It stands there when a failure strikes while the box that refuses it is open.
  Face().txtRampTableIndex.onChange = nullptr;
  Face().txtRampTableIndex.SetText("31");
  EXPECT_THROW(Face().cmdRampIndexset.Click(), StationFailure);
}

TEST_P(RampEditorOn, SetRefusesABadValueInThePanelsWords) {
  const std::string words = OnDialog() ? "Warning, stop: There is a wrong Ramp value. Check again!"
                                       : "Warning, stop: Wrong Ramp value exists. Check again!";
  Face().txtDN[7]->SetText("");
  EXPECT_THAT(Shown(), IsEmpty());
  Face().cmdRampIndexset.Click();
  EXPECT_THAT(Shown(), ElementsAre(words));
  Face().txtDN[7]->SetText("32");
  EXPECT_THAT(Shown(), ElementsAre(kBadValue));
  Face().cmdRampIndexset.Click();
  EXPECT_THAT(Shown(), ElementsAre(words));
  EXPECT_EQ(state.ramp.RampTable[0][23], "23");
}

TEST_P(RampEditorOn, SendsTheBoxesWithBlanksBetweenThem) {
  OpenPort();
  Face().txtRampTableIndex.SetText("3");
  FillRow(Face().txtUP, "7");
  Face().setToTarget.Click();
  EXPECT_THAT(Commands(), ElementsAre("ttw 3 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 "
                                      "19 20 21 22 23 24 25 26 27 28 29 30 31 0 1 2 "));
  ASSERT_EQ(serial.commands.size(), 1U);
  EXPECT_EQ(serial.commands[0].operation, 56);
  EXPECT_EQ(serial.commands[0].data.size(), 33U);
  EXPECT_EQ(serial.commands[0].data[0], 3);
  EXPECT_EQ(serial.commands[0].data[17], 19);
  EXPECT_THAT(panels.main.txtResults.Text(), ::testing::EndsWith("E_OK\r\n"));
  EXPECT_EQ(state.reply.TMStatus, "");
  EXPECT_THAT(Shown(), IsEmpty());
  EXPECT_EQ(state.ramp.RampTable[3][0], "3") << "what is sent is not stored";
}

TEST_P(RampEditorOn, TellsOfATableThatTheTargetRefused) {
  OpenPort();
  serial.answer = [](const SentCommand& command) { return PaddedReply(command.operation, 1); };
  Face().setToTarget.Click();
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Error with saving Ramp Table."));
  EXPECT_THAT(panels.main.txtResults.Text(), ::testing::Not(::testing::HasSubstr("E_OK")));
  EXPECT_EQ(link.Status(), 1);
}

TEST_P(RampEditorOn, SendsTheBoxesOutsideTestModeTooWhereNoReplyIsTaken) {
  OpenPort();
  state.reply.TargetMode = "";
  Face().setToTarget.Click();
  EXPECT_THAT(serial.commands, SizeIs(1));
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Error with saving Ramp Table."));
}

TEST_P(RampEditorOn, AnIndexThatOverflowsIsNotSent) {
  OpenPort();
  Face().txtRampTableIndex.onChange = nullptr;
  Face().txtRampTableIndex.SetText("99999");
  Face().setToTarget.Click();
  EXPECT_THAT(serial.commands, IsEmpty());
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: Error with saving Ramp Table."));
}

TEST_P(RampEditorOn, WithoutAnIndexTheFirstValueNamesTheTable) {
  OpenPort();
  Face().txtRampTableIndex.SetText("");
  FillRow(Face().txtUP, "7");
  Face().setToTarget.Click();
  EXPECT_THAT(Commands(), ElementsAre(::testing::StartsWith("ttw  7 7 7 ")));
  ASSERT_THAT(serial.commands, SizeIs(1));
  EXPECT_THAT(serial.commands[0].data, SizeIs(33));
  EXPECT_EQ(serial.commands[0].data[0], 7);
  EXPECT_EQ(serial.commands[0].data[16], 16) << "the first down value, one place early";
  EXPECT_EQ(serial.commands[0].data[32], 0);
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_P(RampEditorOn, SendsNoBadValue) {
  OpenPort();
  Face().txtUP[0]->SetText("");
  Face().setToTarget.Click();
  EXPECT_THAT(Shown(), ElementsAre("Warning, stop: There is a wrong Ramp value. Check again!"));
  EXPECT_THAT(Commands(), IsEmpty());
}

}  // namespace
}  // namespace orvane::test
