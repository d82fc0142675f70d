#include "console/main_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST_F(MainPanelTest, AVoltageRefusedByTheBaseBandPanelStaysInTheMainBox) {
  baseBand.txtPSVoltage.onChange = [this] {
    if (baseBand.txtPSVoltage.Text() == "4,2") baseBand.txtPSVoltage.SetText("4.21");
  };
  op.Type(main.txtPSVoltage, "4,2");
  EXPECT_EQ(main.txtPSVoltage.Text(), "4,2");
  EXPECT_EQ(baseBand.txtPSVoltage.Text(), "4.21");
}

}  // namespace
}  // namespace orvane::test
