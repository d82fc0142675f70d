#include "rxcal/result_views.h"

#include <gmock/gmock.h>

#include "support/face_rows.h"

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

TEST(ResultPanels, ShowTheirListsAsTheyAreShipped) {
  using enum ControlKind;
  const FrmAutoCalTxResult tx;
  EXPECT_EQ(tx.Name(), "frmAutoCalTxResult");
  EXPECT_EQ(tx.Caption(), "AutoCAL - TX Results");
  ExpectFace(tx, {{"cmdTxcalClose", Button, "Close"},
                  {"fraCalResults", Frame, "Peak Power Measurement"},
                  {"listPeakPower", List, ""},
                  {"fraPowerLevel", Frame, "Power Level"},
                  {"listPowerLevel", List, ""},
                  {"fraCHANNELCAL", Frame, "Channel Calibration Peak Power "},
                  {"listChanCalPeakPower", List, ""},
                  {"fraChanCalPowerLevel", Frame, "Channel Calibration Power Level"},
                  {"listChanCalPowerLevel", List, ""}});
  const FrmAutoCalRxResult rx;
  EXPECT_EQ(rx.Name(), "frmAutoCalRxResult");
  EXPECT_EQ(rx.Caption(), "AutoCAL - RX Results");
  ExpectFace(rx, {{"cmdAutoCalRxResutlsClose", Button, "Close"},
                  {"fraRawRxResults", Frame, "Rx AGC Raw Tables"},
                  {"lstRawRxResults", List, ""},
                  {"fraConvertedRxResults", Frame, "Rx AGC Converted Tables"},
                  {"lstConvertedRxResults", List, ""},
                  {"fraRxChannelCompensation", Frame, "Channel Compensation"},
                  {"lstRxChannelCompensation", List, ""},
                  {"fraRxTemperatureCompensation", Frame, "Calibrated Channel Bands"},
                  {"lstRxCalChannelBands", List, ""}});
}

TEST(ResultPanels, HaveSaveDialogsThatNothingShows) {
  ExpectDialog(FrmAutoCalTxResult().dlgTxCalSave, "Tx Calibration Result Save", "(*.xls)|*.xls|All File", "xls");
  ExpectDialog(FrmAutoCalRxResult().dlgRxCalSave, "Rx Calibration Result Save", "(*.xls)|*.xls|All File", "xls");
}

TEST(VerdictPanels, ShowAButtonAndAPicture) {
  using enum ControlKind;
  const FrmFail fail;
  EXPECT_EQ(fail.Name(), "frmFail");
  EXPECT_EQ(fail.Caption(), "FAIL");
  ExpectFace(fail, {{"Command1", Button, "FAIL"}, {"Image1", Image, ""}});
  EXPECT_EQ(fail.Image1.Picture(), "fail");
  const FrmFailPass pass;
  EXPECT_EQ(pass.Name(), "frmFailPass");
  EXPECT_EQ(pass.Caption(), "PASS");
  ExpectFace(pass, {{"Command1", Button, "PASS"},
                    {"Image1", Image, ""},
                    {"lblDoubt", Label, "", false},
                    {"lblIncomplete", Label, "Not every step was completed:", false},
                    {"lstIncomplete", List, "", false},
                    {"lblRemedy", Label, "", false}});
  EXPECT_EQ(pass.Image1.Picture(), "pass");
}

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
