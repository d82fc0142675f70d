#include "platform/controls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "platform/operator.h"
#include "platform/panel.h"
#include "support/fake_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct SamplePanel : Panel {
  SamplePanel() : Panel("frmSample", "Sample") {}
  Button cmdGo{*this, "cmdGo", "Go"};
  TextBox txtValue{*this, "txtValue", "7"};
  UpDown updValue{*this, "updValue", &txtValue, 0, 30, 7, 1};
  TextBox txtLoss{*this, "txtLoss", "-0.5"};
  UpDown updTenths{*this, "updTenths", nullptr, -200, 0, -5};
  ComboBox cboName{*this, "cboName", "T9300", {"T9300", "QM310"}};
  ListBox lstRows{*this, "lstRows"};
  OptionGroup group;
  OptionButton optFirst{*this, "optFirst", "First", group, OptionButton::Start::Selected};
  OptionButton optSecond{*this, "optSecond", "Second", group};
  CheckBox chkAuto{*this, "chkAuto", "Auto"};
  ProgressBar prgBar{*this, "prgBar"};
  Frame fraOuter{*this, "fraOuter", "Outer"};
  Frame fraInner{*this, "fraInner", "Inner"};
};

class ControlsTest : public testing::Test {
 protected:
  ControlsTest() {
    panel_.txtValue.onChange = [this] { events_.push_back("change " + panel_.txtValue.Text()); };
    panel_.cboName.onChange = [this] { events_.push_back("change " + panel_.cboName.Text()); };
    panel_.cboName.onClick = [this] { events_.push_back("click " + panel_.cboName.Text()); };
    panel_.optFirst.onClick = [this] { events_.emplace_back("first"); };
    panel_.optSecond.onClick = [this] { events_.emplace_back("second"); };
    panel_.chkAuto.onClick = [this] { events_.emplace_back(panel_.chkAuto.Checked() ? "checked" : "cleared"); };
    panel_.cmdGo.onClick = [this] { events_.emplace_back("go"); };
    panel_.updTenths.onChange = [this] { events_.push_back("spin " + std::to_string(panel_.updTenths.Value())); };
  }

  test::Journal journal_;
  test::FakeBoxes boxes_{journal_};
  OperationNest nest_{boxes_};
  Operator op_{nest_};
  SamplePanel panel_;
  std::vector<std::string> events_;
};

TEST_F(ControlsTest, ABoxChangesOnceForATypedTextAndOncePerKey) {
  op_.Type(panel_.txtValue, "123");
  EXPECT_THAT(events_, ElementsAre("change 123"));
  events_.clear();
  op_.Type(panel_.txtValue, "");
  for (const char key : std::string("4x")) op_.Key(panel_.txtValue, static_cast<char32_t>(key));
  op_.Key(panel_.txtValue, 8);
  op_.Key(panel_.txtValue, 13);
  EXPECT_THAT(events_, ElementsAre("change ", "change 4", "change 4x", "change 4"));
}

TEST_F(ControlsTest, AnAssignmentChangesABoxOnlyWhenTheTextDiffers) {
  panel_.txtValue.SetText("7");
  EXPECT_THAT(events_, IsEmpty());
  panel_.txtValue.SetText("8");
  EXPECT_THAT(events_, ElementsAre("change 8"));
}

TEST_F(ControlsTest, AKeyPressIsHeardBeforeItsEffect) {
  std::string seen;
  panel_.txtValue.onKeyPress = [&](char32_t key) {
    seen = panel_.txtValue.Text();
    if (key == 'x') panel_.txtValue.SetText("");
  };
  op_.Key(panel_.txtValue, 'x');
  EXPECT_EQ(seen, "7");
  EXPECT_EQ(panel_.txtValue.Text(), "x");
}

TEST_F(ControlsTest, BackspaceTakesAWholeCharacter) {
  op_.Type(panel_.txtValue, "a\xE3\x84\xB1");
  op_.Key(panel_.txtValue, 8);
  EXPECT_EQ(panel_.txtValue.Text(), "a");
  op_.Key(panel_.txtValue, 0x3131);
  EXPECT_EQ(panel_.txtValue.Text(), "a\xE3\x84\xB1");
}

TEST_F(ControlsTest, AConsoleGrowsAndShrinksQuietly) {
  std::string appended;
  panel_.txtValue.appended.Connect([&](std::string_view text) { appended += text; });
  panel_.txtValue.AppendQuietly("ab\xC3\xA9");
  panel_.txtValue.DropLastCharacterQuietly();
  panel_.txtValue.DropFrontQuietly(1);
  EXPECT_EQ(panel_.txtValue.Text(), "ab");
  EXPECT_EQ(appended, "ab\xC3\xA9");
  EXPECT_THAT(events_, IsEmpty());
}

TEST_F(ControlsTest, AComboChangesByTypingAndClicksByPicking) {
  op_.Type(panel_.cboName, "odd");
  op_.Pick(panel_.cboName, 1);
  op_.Click(panel_.cboName);
  panel_.cboName.SetText("T9300");
  EXPECT_THAT(events_, ElementsAre("change odd", "click QM310", "click QM310", "change T9300"));
  EXPECT_EQ(panel_.cboName.Selected(), 0);
  op_.Key(panel_.cboName, 'x');
  EXPECT_EQ(panel_.cboName.Selected(), -1);
}

TEST_F(ControlsTest, PickingAnEntryThatIsNotThereFails) {
  EXPECT_NE(op_.Pick(panel_.cboName, 2), std::nullopt);
  EXPECT_EQ(panel_.cboName.Text(), "T9300");
}

TEST_F(ControlsTest, TheStationSelectsAnOptionOnceAndAnOperatorAnew) {
  panel_.optFirst.Select();
  EXPECT_THAT(events_, IsEmpty()) << "it starts selected";
  panel_.optSecond.Select();
  panel_.optSecond.Select();
  EXPECT_THAT(events_, ElementsAre("second"));
  EXPECT_FALSE(panel_.optFirst.Selected());
  op_.Select(panel_.optSecond);
  EXPECT_THAT(events_, ElementsAre("second", "second")) << "a click is a click, also on what is selected";
}

TEST_F(ControlsTest, ACheckBoxClicksWhenItsStateChanges) {
  panel_.chkAuto.SetChecked(false);
  panel_.chkAuto.SetChecked(true);
  op_.Check(panel_.chkAuto, true);
  op_.Check(panel_.chkAuto, false);
  EXPECT_THAT(events_, ElementsAre("checked", "cleared"));
}

TEST_F(ControlsTest, ASpinStepsTheNumberInItsBox) {
  op_.Step(panel_.updValue, 1);
  EXPECT_EQ(panel_.txtValue.Text(), "8");
  op_.Type(panel_.txtValue, "20");
  op_.Step(panel_.updValue, -2);
  EXPECT_EQ(panel_.txtValue.Text(), "18");
  op_.Type(panel_.txtValue, "29");
  op_.Step(panel_.updValue, 5);
  EXPECT_EQ(panel_.txtValue.Text(), "30");
  op_.Type(panel_.txtValue, "500");
  EXPECT_EQ(panel_.txtValue.Text(), "500") << "a typed value is never cut";
  op_.Step(panel_.updValue, 1);
  EXPECT_EQ(panel_.txtValue.Text(), "30");
}

TEST_F(ControlsTest, ASpinStartsFromItsOwnValueWhenItsBoxHoldsNoNumber) {
  op_.Step(panel_.updValue, 1);
  op_.Type(panel_.txtValue, "x");
  op_.Step(panel_.updValue, 1);
  EXPECT_EQ(panel_.txtValue.Text(), "9");
}

TEST_F(ControlsTest, ASpinWithoutABoxKeepsItsOwnValue) {
  op_.Step(panel_.updTenths, 1);
  op_.Step(panel_.updTenths, 10);
  op_.Step(panel_.updTenths, 1);
  op_.Move(panel_.updTenths, -200);
  EXPECT_THAT(events_, ElementsAre("spin -4", "spin 0", "spin -200"));
  EXPECT_NE(op_.Move(panel_.updTenths, 1), std::nullopt);
  EXPECT_EQ(panel_.updTenths.Value(), -200);
  EXPECT_EQ(panel_.txtLoss.Text(), "-0.5");
}

TEST_F(ControlsTest, ABarRefusesAValueAboveItsMaximum) {
  panel_.prgBar.SetMax(113);
  panel_.prgBar.SetValue(113);
  EXPECT_THROW(panel_.prgBar.SetValue(114), StationFailure);
  EXPECT_THROW(panel_.prgBar.SetValue(-1), StationFailure);
  EXPECT_EQ(panel_.prgBar.Value(), 113);
  panel_.prgBar.SetMax(2);
  EXPECT_EQ(panel_.prgBar.Value(), 2);
}

TEST_F(ControlsTest, ADisabledControlRefusesAnOperatorAndNotTheStation) {
  panel_.cmdGo.SetEnabled(false);
  panel_.txtValue.SetEnabled(false);
  EXPECT_THROW(op_.Click(panel_.cmdGo), ControlDisabled);
  EXPECT_THROW(op_.Type(panel_.txtValue, "9"), ControlDisabled);
  EXPECT_THAT(events_, IsEmpty());
  panel_.cmdGo.Click();
  EXPECT_THAT(events_, ElementsAre("go"));
}

TEST_F(ControlsTest, AControlInADisabledFrameRefusesAnOperatorAndNotTheStation) {
  panel_.fraOuter.Hold({&panel_.fraInner, &panel_.cboName});
  panel_.fraInner.Hold({&panel_.cmdGo});
  panel_.fraOuter.SetEnabled(false);
  EXPECT_THROW(op_.Click(panel_.cmdGo), ControlDisabled);
  EXPECT_THROW(op_.Pick(panel_.cboName, 1), ControlDisabled);
  EXPECT_TRUE(panel_.cmdGo.Enabled()) << "its own state is another thing";
  op_.Check(panel_.chkAuto, true);
  EXPECT_THAT(events_, ElementsAre("checked")) << "it stands outside";
  panel_.cmdGo.Click();
  EXPECT_THAT(events_, ElementsAre("checked", "go"));

  panel_.fraOuter.SetEnabled(true);
  EXPECT_EQ(op_.Click(panel_.cmdGo), std::nullopt);
  panel_.cmdGo.SetEnabled(false);
  EXPECT_THROW(op_.Click(panel_.cmdGo), ControlDisabled);
}

TEST_F(ControlsTest, WhatAFrameHoldsIsShownAnewWhenTheFrameIs) {
  panel_.fraOuter.Hold({&panel_.fraInner});
  panel_.fraInner.Hold({&panel_.cmdGo});
  int told = 0;
  panel_.cmdGo.changed.Connect([&] { ++told; });
  panel_.fraOuter.SetEnabled(false);
  EXPECT_EQ(told, 1);
}

TEST_F(ControlsTest, AListTellsOfEachRow) {
  std::vector<std::string> rows;
  panel_.lstRows.rowAdded.Connect([&](const std::string& row) { rows.push_back(row); });
  panel_.lstRows.AddItem("a\tb");
  panel_.lstRows.Select(0);
  panel_.lstRows.Clear();
  EXPECT_THAT(rows, ElementsAre("a\tb"));
  EXPECT_EQ(panel_.lstRows.Selected(), -1);
  EXPECT_THAT(panel_.lstRows.Items(), IsEmpty());
}

TEST_F(ControlsTest, AListHoldsSoManyRowsAndLosesTheOldestBeyond) {
  ListBox& list = panel_.lstRows;
  std::vector<std::string> told;
  list.rowAdded.Connect([&](const std::string& row) { told.push_back("added " + row); });
  list.firstRowDropped.Connect([&] { told.push_back("dropped, first is " + list.Items().front()); });
  for (int i = 0; i < 20000; ++i) list.AddItem(std::to_string(i));
  EXPECT_EQ(list.Items().size(), 20000U);
  EXPECT_EQ(list.Items().front(), "0");
  list.Select(1);
  told.clear();
  list.AddItem("20000");
  EXPECT_THAT(told, ElementsAre("dropped, first is 1", "added 20000"));
  EXPECT_EQ(list.Items().size(), 20000U);
  EXPECT_EQ(list.Selected(), 0) << "the same row as before";
  list.AddItem("20001");
  EXPECT_EQ(list.Selected(), -1) << "the selected row has gone";
  for (int i = 20002; i < 100000; ++i) list.AddItem(std::to_string(i));
  EXPECT_EQ(list.Items().size(), 20000U);
  EXPECT_EQ(list.Items().front(), "80000");
  EXPECT_EQ(list.Items().back(), "99999");
  EXPECT_EQ(list.Selected(), -1);
}

TEST_F(ControlsTest, AFullListTakesTheTextOfTheRowThatGoes) {
  ListBox& list = panel_.lstRows;
  const std::string oldest = "a row that is too long for any place but the heap";
  list.AddItem(oldest);
  while (list.Items().size() < ListBox::kMostRows) list.AddItem("another");
  list.AddItem(list.Items().front());
  EXPECT_EQ(list.Items().front(), "another");
  EXPECT_EQ(list.Items().back(), oldest);
}

TEST_F(ControlsTest, ControlsStartWithTheColoursOfTheirKind) {
  EXPECT_EQ(panel_.cmdGo.BackColor(), 0x8000000FU);
  EXPECT_EQ(panel_.txtValue.BackColor(), 0x80000005U);
  EXPECT_EQ(kGreen, 0x0000FF00U);
  EXPECT_EQ(kRed, 255U);
}

TEST_F(ControlsTest, AChangeIsToldOnceAndOnlyWhenThereIsOne) {
  int told = 0;
  panel_.cmdGo.changed.Connect([&] { ++told; });
  panel_.cmdGo.SetCaption("Go");
  panel_.cmdGo.SetEnabled(true);
  EXPECT_EQ(told, 0);
  panel_.cmdGo.SetCaption("Stop");
  panel_.cmdGo.SetBackColor(kRed);
  panel_.cmdGo.SetBackColor(kRed);
  EXPECT_EQ(told, 2);
}

TEST(Panel, LoadsOnceWhenFirstTouchedAndKeepsItsStateWhenClosed) {
  SamplePanel panel;
  int loads = 0;
  panel.onLoad = [&] { ++loads; };
  const PanelRef<SamplePanel> ref(panel);
  EXPECT_FALSE(panel.Created());
  ref.Untouched().txtValue.onChange = [] {};
  EXPECT_EQ(loads, 0);
  ref->txtValue.SetText("9");
  EXPECT_EQ(loads, 1);
  EXPECT_FALSE(panel.Visible());
  panel.Show();
  panel.Close();
  EXPECT_FALSE(panel.Visible());
  panel.Show();
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(panel.txtValue.Text(), "9");
}

TEST(Panel, AsksItsCloseOperationFirst) {
  SamplePanel panel;
  panel.Show();
  panel.onClose = [] {};
  panel.Close();
  EXPECT_TRUE(panel.Visible());
}

TEST(Panel, FindsAControlByName) {
  SamplePanel panel;
  EXPECT_EQ(panel.Find("cboName"), &panel.cboName);
  EXPECT_EQ(panel.Find("cboname"), nullptr);
  EXPECT_EQ(panel.Controls().front(), &panel.cmdGo);
  EXPECT_EQ(ElementName("txtUP", 3), "txtUP(3)");
}

}  // namespace
}  // namespace orvane
