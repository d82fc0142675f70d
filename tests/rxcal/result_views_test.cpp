#include "rxcal/result_views.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ResultViewsTest : public ::testing::Test {
 protected:
  ResultViewsTest() { views.Connect(); }

  FrmAutoCalTxResult tx;
  FrmAutoCalRxResult rx;
  FrmFail fail;
  FrmFailPass pass;
  OrvaneMain main;
  ResultViews views{tx, rx, fail, pass, main};
};

TEST_F(ResultViewsTest, ConnectingCreatesNoPanel) {
  for (const Panel* panel : std::initializer_list<const Panel*>{&tx, &rx, &fail, &pass, &main}) {
    EXPECT_FALSE(panel->Created()) << panel->Name();
  }
}

TEST_F(ResultViewsTest, AClosedViewShowsTheSameRowsWhenItIsOpenedAgain) {
  tx.Show();
  tx.listPeakPower.AddItem("5\t32.01");
  tx.cmdTxcalClose.Click();
  EXPECT_FALSE(tx.Visible());
  tx.Show();
  EXPECT_TRUE(tx.Visible());
  EXPECT_THAT(tx.listPeakPower.Items(), ElementsAre("5\t32.01"));
}

TEST_F(ResultViewsTest, TheReceiveViewHasFourListsThatStayEmpty) {
  rx.Show();
  for (const ListBox* list :
       {&rx.lstRawRxResults, &rx.lstConvertedRxResults, &rx.lstRxChannelCompensation, &rx.lstRxCalChannelBands}) {
    EXPECT_THAT(list->Items(), IsEmpty()) << list->Name();
  }
  rx.cmdAutoCalRxResutlsClose.Click();
  EXPECT_FALSE(rx.Visible());
}

TEST_F(ResultViewsTest, AVerdictsButtonHidesItAndShowsTheMainPanel) {
  for (const auto& [panel, button] :
       {std::pair<Panel*, Button*>{&fail, &fail.Command1}, std::pair<Panel*, Button*>{&pass, &pass.Command1}}) {
    main.Hide();
    panel->Show();
    button->Click();
    EXPECT_FALSE(panel->Visible());
    EXPECT_TRUE(main.Visible());
  }
}

TEST_F(ResultViewsTest, AVerdictsWindowCloseOnlyHidesIt) {
  fail.Show();
  fail.Close();
  EXPECT_FALSE(fail.Visible());
  EXPECT_FALSE(main.Visible());
}

}  // namespace
}  // namespace orvane::test
