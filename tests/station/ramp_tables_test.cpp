#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// An engineer before the two ramp editors, the Target on an open line.
struct RampTables : testing::Test, VirtualStation {
  RampTables() {
    op.Click(autoCal.cmdRampShape);
    bench.Serial().setup.rThreshold = 1;
    bench.Serial().Open();
    Say("tms 1");
    boxes.shown.clear();
    journal.Clear();
  }

  /// A line typed by hand.
  void Say(const std::string& line) {
    op.Click(main.txtUserCommand);
    op.Type(main.txtUserCommand, line);
    op.Key(main.txtUserCommand, 13);
  }
  void Fill(const ControlArray<TextBox>& row, const std::string& value) {
    for (const auto& box : row) op.Type(*box, value);
  }

  OrvaneMain& main = Panels().main;
  FrmAutoCal& autoCal = Panels().autoCal;
  RampEditorFace& onMain = main.ramp;
  RampEditorFace& onDialog = Panels().rampTable.editor;
};

TEST_F(RampTables, EachPanelHasItsOwnGreenSumAndItsOwnWords) {
  for (const auto& [value, mainColour, dialogColour] :
       {std::tuple{"8", kGreen, kRed}, std::tuple{"16", kRed, kGreen}}) {
    Fill(onMain.txtUP, value);
    Fill(onDialog.txtUP, value);
    EXPECT_EQ(onMain.txtRampUpStatus.BackColor(), mainColour) << value;
    EXPECT_EQ(onDialog.txtRampUpStatus.BackColor(), dialogColour) << value;
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
  for (RampEditorFace* face : {&onMain, &onDialog}) {
    op.Type(*face->txtUP[0], "");
    op.Click(face->cmdRampIndexset);
  }
  EXPECT_THAT(boxes.Texts(),
              ElementsAre("Wrong Ramp value exists. Check again!", "There is a wrong Ramp value. Check again!"));
}

TEST_F(RampTables, BothPanelsEditTheSameTables) {
  op.Type(onMain.txtRampTableIndex, "16");
  Fill(onMain.txtUP, "9");
  op.Click(onMain.cmdRampIndexset);
  op.Type(onDialog.txtRampTableIndex, "16");
  EXPECT_EQ(onDialog.txtUP[15]->Text(), "9");
  Fill(onDialog.txtDN, "4");
  op.Click(onDialog.cmdRampIndexset);
  EXPECT_NE(onMain.txtDN[15]->Text(), "4") << "until it is asked for anew";
  op.Type(onMain.txtRampTableIndex, "15");
  op.Type(onMain.txtRampTableIndex, "16");
  EXPECT_EQ(onMain.txtDN[15]->Text(), "4");
  const RFParameter::Ramp& ramp = State().rf.RFParams.BAND[1].ramp_tables[1];
  EXPECT_EQ(ramp.ramp_up[15], 9);
  EXPECT_EQ(ramp.ramp_down[15], 4);
  EXPECT_THAT(journal.Lines(), IsEmpty()) << "nothing goes to the Target";
}

TEST_F(RampTables, ATableThatWasSentIsReadBackByHandAndShownByLoad) {
  const struct {
    RampEditorFace& face;
    std::size_t table;
    std::string up;
    std::string down;
  } cases[] = {{onMain, 5, "8", "20"}, {onDialog, 6, "12", "31"}};
  for (const auto& [face, table, up, down] : cases) {
    const auto& stored = State().ramp.RampTable[table];
    op.Type(face.txtRampTableIndex, std::to_string(table));
    Fill(face.txtUP, up);
    Fill(face.txtDN, down);
    // The reply has the first value where others have their status.
    op.Type(*face.txtUP[0], "0");
    op.Click(face.setToTarget);
    EXPECT_NE(stored[1], up) << "what is sent is not stored";
    Say("ttr " + std::to_string(table));
    EXPECT_EQ(stored[0], "0");
    EXPECT_EQ(stored[1], up);
    EXPECT_EQ(stored[31], down);
    Fill(face.txtUP, "3");
    op.Select(face.optTarget);
    op.Click(face.cmdRampLoad);
    EXPECT_EQ(face.txtUP[15]->Text(), up);
    EXPECT_EQ(std::to_string(State().rf.RFParams.BAND[0].ramp_tables[table].ramp_up[15]), up);
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(State().tally.silentWaits, 0);
}

TEST_F(RampTables, TheTargetTakesAllTables) {
  op.Select(onDialog.optTarget);
  op.Click(onDialog.cmdRampSave);
  op.Click(onMain.cmdRampSave);
  EXPECT_THAT(boxes.Texts(),
              ElementsAre("31 Ramp Table are saved completely.", "31 Ramp Tables are saved completely."));
  EXPECT_THAT(journal.Commands(), SizeIs(62));
  EXPECT_EQ(State().tally.silentWaits, 0);
  EXPECT_EQ(State().tally.failureStatuses, 0);
}

}  // namespace
}  // namespace orvane::test
