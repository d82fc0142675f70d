#include "console/main_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "charger/bench_instruments.h"
#include "console_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct MainPanelTest : testing::Test, ConsoleRig {};

TEST_F(MainPanelTest, ItsButtonsShowTheOtherPanels) {
  const struct {
    Button& button;
    const char* caption;
    Panel& panel;
  } cases[] = {{main.cmdAutoCal, "AUTO CAL", autoCal},
               {main.Command1, "BASE BAND", baseBand},
               {main.Command2, "DOWN LOAD", downLoad}};
  for (const auto& [button, caption, panel] : cases) {
    EXPECT_EQ(button.Caption(), caption);
    EXPECT_FALSE(panel.Created());
    op.Click(button);
    EXPECT_TRUE(panel.Visible());
    panel.Close();
    EXPECT_FALSE(panel.Visible());
    op.Click(button);
    EXPECT_TRUE(panel.Visible());
  }
}

TEST_F(MainPanelTest, ExitAsksAndEndsTheStationOnOk) {
  boxes.answers = {BoxButton::Ok};
  EXPECT_THROW(op.Click(main.cmdExit), StationEnded);
  ASSERT_EQ(boxes.shown.size(), 1U);
  EXPECT_EQ(boxes.shown[0].text, "Do you want to finish ORVANE?");
  EXPECT_EQ(boxes.shown[0].title, "Exit");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Exclamation);
  EXPECT_THAT(boxes.shown[0].buttons, ElementsAre(BoxButton::Ok, BoxButton::Cancel));
}

TEST_F(MainPanelTest, ExitLeavesPortAndTargetAsTheyAre) {
  serial.Open();
  boxes.answers = {BoxButton::Ok};
  EXPECT_THROW(op.Click(main.cmdExit), StationEnded);
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_THAT(serial.writes, IsEmpty());
}

TEST_F(MainPanelTest, ExitGoesOnAfterCancel) {
  boxes.answers = {BoxButton::Cancel};
  EXPECT_EQ(op.Click(main.cmdExit), std::nullopt);
  EXPECT_EQ(boxes.shown.size(), 1U);
}

TEST_F(MainPanelTest, ItsWindowsCloseButtonIsAClickOfExit) {
  main.Show();
  boxes.answers = {BoxButton::Cancel, BoxButton::Ok};
  main.Close();
  EXPECT_TRUE(main.Visible());
  EXPECT_THROW(main.Close(), StationEnded);
  EXPECT_THAT(boxes.Texts(), ElementsAre("Do you want to finish ORVANE?", "Do you want to finish ORVANE?"));
}

TEST_F(MainPanelTest, TheSupplyButtonsForwardToTheBaseBandPanel) {
  op.Click(main.cmdPSInitialize);
  op.Click(main.cmdPSVoltageSet);
  op.Click(main.cmdPSReset);
  EXPECT_THAT(Clicks(),
              ElementsAre("frmBaseBand.cmdPSInitialize", "frmBaseBand.cmdPSVoltageSet", "frmBaseBand.cmdPSReset"));
}

TEST_F(MainPanelTest, AChangedSupplyTextIsCopiedToTheBaseBandPanelOneWay) {
  op.Type(main.txtPSVoltage, "3.9");
  op.Type(main.txtVoltageLoss, "0.02");
  EXPECT_EQ(baseBand.txtPSVoltage.Text(), "3.9");
  EXPECT_EQ(baseBand.txtVoltageLoss.Text(), "0.02");

  op.Type(baseBand.txtPSVoltage, "4.5");
  op.Type(baseBand.txtVoltageLoss, "0.05");
  EXPECT_EQ(main.txtPSVoltage.Text(), "3.9");
  EXPECT_EQ(main.txtVoltageLoss.Text(), "0.02");
}

/// The main panel's supply boxes in front of the supply itself, whose rules stand on frmBaseBand.
struct SupplyTwins : MainPanelTest {
  SupplyTwins() { supply.Connect(); }
  BenchSupply supply{CWGPIBPower, baseBand, main, state.charger, console, boxes};
};

TEST_F(SupplyTwins, AVoltageRefusedByTheBaseBandPanelStaysInTheMainBox) {
  op.Type(main.txtPSVoltage, "3.9");
  for (const char* bad : {"4,2", "4.2 ", "-4", "4v", "\u3131"}) {
    boxes.shown.clear();
    op.Type(main.txtPSVoltage, bad);
    ASSERT_EQ(boxes.shown.size(), 1U) << bad;
    ExpectBox(boxes.shown[0], "Input the number without blank.", "Warning", BoxIcon::Stop);
    EXPECT_EQ(main.txtPSVoltage.Text(), bad);
    EXPECT_EQ(baseBand.txtPSVoltage.Text(), "4.21") << bad;
  }
}

TEST_F(SupplyTwins, TheSupplyIsSetToTheBaseBandPanelsVoltage) {
  op.Click(main.cmdPSInitialize);
  op.Type(main.txtPSVoltage, "4,2");
  bus.At(2).lines.clear();
  op.Click(main.cmdPSVoltageSet);
  EXPECT_THAT(bus.At(2).lines, ElementsAre("VOLT 4.21"));
}

TEST_F(SupplyTwins, AVoltageLossIsCopiedWhateverItSays) {
  for (const char* loss : {"0,01", "x", "", "0.02"}) {
    op.Type(main.txtVoltageLoss, loss);
    EXPECT_EQ(baseBand.txtVoltageLoss.Text(), loss);
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(SupplyTwins, AChangeOnTheBaseBandPanelIsCheckedThereAndNeverCopiedBack) {
  op.Type(baseBand.txtPSVoltage, "4,5");
  EXPECT_THAT(boxes.Texts(), ElementsAre("Input the number without blank."));
  op.Type(baseBand.txtPSVoltage, "4.5");
  EXPECT_EQ(main.txtPSVoltage.Text(), "4.21");
}

}  // namespace
}  // namespace orvane::test
