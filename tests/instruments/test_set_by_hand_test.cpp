#include "instruments/test_set_by_hand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instruments_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TestSetByHandTest : testing::Test, InstrumentsRig {
  /// A ready test set of that kind, with nothing written or shown yet.
  void Ready(std::string_view kind) {
    Select(kind);
    op.Click(main.cmdInstrumentInitialize);
    Instrument().lines.clear();
    main.txtResults.SetText("");
    boxes.shown.clear();
  }
};

TEST_F(TestSetByHandTest, WritesAndShowsTheLineOfTheSelectedTestSet) {
  const struct {
    const char* kind;
    const char* level;
    const char* loss;
    const char* gsm;
    const char* dcs;
  } cases[] = {
      {"HP8922M", "RFG:AMPL1 -85dBm", "", "CONF:RAD 'E-GSM'", "CONF:RAD 'E-GSM'"},
      {"HP8960", "CALL:CELL:RFG:POWER:AMPLITUDE -85dBm", "SYST:CORR:SGA -0.5", "CALL:CELL:BAND EGSM",
       "CALL:CELL:BAND DCS"},
      {"4400M(WaveTek)", "", "", "", ""},
  };
  for (const auto& [kind, level, loss, gsm, dcs] : cases) {
    Ready(kind);
    main.cboRxTargetRFMode.SetText("GSM");
    main.cboTxTargetRFMode.SetText("DCS");
    op.Click(main.cmdAGCPowerLevelSet);
    op.Click(main.cmdAPCLoss);
    op.Click(main.RXTargetSet);
    op.Click(main.TXTargetSet);
    EXPECT_THAT(Instrument().lines, ElementsAre(level, loss, gsm, dcs)) << kind;
    EXPECT_EQ(Shown(), std::string(level) + "\r\n" + loss + "\r\n" + gsm + "\r\n" + dcs + "\r\n") << kind;
    EXPECT_THAT(boxes.shown, IsEmpty());
  }
}

TEST_F(TestSetByHandTest, EachRfModeButtonReadsItsOwnBox) {
  Ready("HP8960");
  main.cboRxTargetRFMode.SetText("DCS");
  main.cboTxTargetRFMode.SetText("GSM");
  op.Click(main.RXTargetSet);
  op.Click(main.TXTargetSet);
  EXPECT_THAT(Instrument().lines, ElementsAre("CALL:CELL:BAND DCS", "CALL:CELL:BAND EGSM"));
}

TEST_F(TestSetByHandTest, AnRfModeOfNoRowIsAnEmptyLineForAnHP8960) {
  Ready("HP8960");
  op.Type(main.cboRxTargetRFMode, "PCS");
  op.Click(main.RXTargetSet);
  EXPECT_THAT(Instrument().lines, ElementsAre(""));
}

TEST_F(TestSetByHandTest, NeedsAnInitializedTestSet) {
  const struct {
    Button& button;
    const char* words;
  } cases[] = {{main.cmdAGCPowerLevelSet, "Initialize the Test Set at first."},
               {main.cmdAPCLoss, "Initialize the Test Set at first."},
               {main.RXTargetSet, "Initialize Test Set at first."},
               {main.TXTargetSet, "Initialize Test Set at first."}};
  // The test set is asked for ahead of an empty box.
  main.txtAGCPowerLevel.SetText("");
  main.txtAPCLoss.SetText("");
  for (const auto& [button, words] : cases) {
    boxes.shown.clear();
    EXPECT_EQ(op.Click(button), std::nullopt);
    ASSERT_EQ(boxes.shown.size(), 1U);
    ExpectWarning(boxes.shown[0], words);
  }
  EXPECT_EQ(Shown(), "");
}

TEST_F(TestSetByHandTest, NeedsAValue) {
  Ready("HP8960");
  main.txtAGCPowerLevel.SetText("");
  main.txtAPCLoss.SetText("");
  op.Click(main.cmdAGCPowerLevelSet);
  op.Click(main.cmdAPCLoss);
  ASSERT_EQ(boxes.shown.size(), 2U);
  ExpectWarning(boxes.shown[0], "Input the Power Level.");
  ExpectWarning(boxes.shown[1], "Input the Loss.");
  EXPECT_THAT(Instrument().lines, IsEmpty());
}

TEST_F(TestSetByHandTest, ALineThatFailsIsNotShown) {
  Ready("HP8960");
  Instrument().absent = true;
  EXPECT_TRUE(op.Click(main.RXTargetSet).has_value());
  EXPECT_EQ(Shown(), "");
}

}  // namespace
}  // namespace orvane::test
