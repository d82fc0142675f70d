#include "txcal/phase_check.h"

#include "base/failure.h"
#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(PhaseReading, TakesTheSecondAndThirdField) {
  const PhaseError error = PhaseErrorOf("0,1.5,4.2,-12\n");
  EXPECT_EQ(error.rms.Text(), "1.5");
  EXPECT_EQ(error.peak.Text(), "4.2");
  const PhaseError blanks = PhaseErrorOf("0, 1.23456 , +4.2E+00,");
  EXPECT_EQ(blanks.rms.Text(), "1.2346");
  EXPECT_EQ(blanks.peak.Text(), "4.2");
}

TEST(PhaseReading, NeedsThreeCommasAndNumbers) {
  for (const char* reading : {"", "0", "0,1.5", "0,1.5,4.2", "0,x,4.2,1", "0,1.5,,1", "0,1E30,4.2,1"}) {
    EXPECT_THROW((void)PhaseErrorOf(reading), StationFailure) << reading;
  }
}

using PhaseCheckRun = test::TxDesk;

constexpr const char* kNever = "nobody sends this";

TEST_F(PhaseCheckRun, ClosesTheGsmRunAndChecksTheReferenceChannel) {
  ClickGsm();
  EXPECT_THAT(
      Trace("Target: rfe 0", kNever),
      ElementsAre("Target: rfe 0 +6", "Target: txpw 8 0 +6", "Target: txpw 9 0 +6", "Target: rfpw 2 62 +6",
                  "Target: rfpw 1 62 +6", "1: RFAN:MAN:CHAN:SELECTED 62", "1: CALL:BCH:SEQ 62", "1: CALL:TCH:SEQ 62",
                  "1: SYST:CORR:SGA -0.5", "1: CALL:CELL:POWER:AMPLITUDE -74.5 DBM +101", "Target: rfe 2 +51",
                  "1: SETUP:TXPOWER:CONTINUOUS OFF +1", "1: SETUP:TXPOWER:COUNT:SNUMBER 5 +1",
                  "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO +1", "1: SETUP:PFERROR:BSYNC MIDAMBLE +1",
                  "1: INITIATE:PFERROR +101", "1: FETCH:PFERROR:ALL? +11", "Target: rfe 0 +6"));
  EXPECT_THAT(panels.main.txtResults.Text(), HasSubstr("CALL:CELL:POWER:AMPLITUDE -74.5 DBM\r\n"));
  EXPECT_THAT(panels.main.txtResults.Text(), HasSubstr("0,1.5,4.2,-12\r\n"));
}

TEST_F(PhaseCheckRun, ClosesTheDcsRunWithFewerLines) {
  ClickDcs();
  EXPECT_THAT(Trace("Target: rfpw 1 699", kNever, 2),
              ElementsAre("Target: rfpw 1 699 +6", "1: RFAN:MAN:CHAN:SELECTED 699", "1: CALL:TCH:SEQ 699",
                          "1: CALL:CELL:POWER:AMPLITUDE -74.5 DBM", "1: CALL:MS:TXL:SEQ 0 +101", "Target: rfe 2 +51",
                          "1: SETUP:TXPOWER:CONTINUOUS OFF +1", "1: SETUP:TXPOWER:COUNT:SNUMBER 5 +1",
                          "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO +1", "1: SETUP:PFERROR:BSYNC MIDAMBLE +1",
                          "1: INITIATE:PFERROR +101", "1: FETCH:PFERROR:ALL? +11", "Target: rfe 0 +6"));
}

TEST_F(PhaseCheckRun, WritesTheSameLinesToEveryTestSet) {
  ClickGsm();
  const auto onHp8960 = Trace("1: RFAN:MAN:CHAN:SELECTED 62", kNever, 2);
  OpenTestSet("HP8922M");
  journal.Clear();
  panel.txtPeakPower.SetText("31.96");
  ClickGsm();
  EXPECT_EQ(Trace("1: RFAN:MAN:CHAN:SELECTED 62", kNever), onHp8960);
}

TEST_F(PhaseCheckRun, CopiesTheRampTablesOfBothBandsAndMarksTheBandDone) {
  ClickGsm();
  EXPECT_TRUE(cal.GsmCalDone);
  EXPECT_FALSE(cal.DcsCalDone);
  EXPECT_EQ(Record(0).ramp_tables[14].ramp_up[0], 14);
  EXPECT_EQ(Record(0).ramp_tables[14].ramp_down[0], 30);
  EXPECT_EQ(Record(1).ramp_tables[0].ramp_up[0], 15);
  EXPECT_EQ(Record(1).ramp_tables[15].ramp_down[15], (30 + 31) % 32);
  EXPECT_EQ(Record(0).ramp_tables[15].ramp_up[0], 0) << "nobody's table";
}

TEST_F(PhaseCheckRun, AFailingRfeAtTheCloseLeavesTheBandUndone) {
  during["rfpw 1 975"] = [this] { failing = {"rfe 0"}; };
  Note();
  ClickGsm();
  EXPECT_FALSE(cal.GsmCalDone);
  EXPECT_EQ(Record(0).ramp_tables[14].ramp_up[0], 0);
  EXPECT_EQ(Flaws(), "\"rfe 0\" failed with status 5.");
}

TEST_F(PhaseCheckRun, AFailureInTheCheckLeavesTheBandDone) {
  for (const char* command : {"txpw 8 0", "txpw 9 0", "rfpw 2 62", "rfpw 1 62", "rfe 2"}) {
    failing.clear();
    during["rfe 0"] = [this, command] { failing = {command}; };
    Note();
    ClickGsm();
    EXPECT_EQ(Commands().back(), command);
    EXPECT_TRUE(cal.GsmCalDone);
    EXPECT_EQ(Flaws(), std::string("\"") + command + "\" failed with status 5.");
    failing.clear();
    during.clear();
  }
}

TEST_F(PhaseCheckRun, ATestSetThatWasResetMeanwhileEndsTheCheck) {
  during["rfe 0"] = [this] { state.testSet.TestSetReady = false; };
  Note();
  ClickGsm();
  EXPECT_THAT(boxes.Texts(), ElementsAre("Initialize Test Set at first."));
  EXPECT_EQ(Commands().back(), "rfpw 1 62");
  EXPECT_TRUE(cal.GsmCalDone);
  EXPECT_EQ(Flaws(), "The test set is not initialized.");
}

TEST_F(PhaseCheckRun, WarnsAboveItsLimitsAlone) {
  const struct {
    const char* reading;
    std::vector<std::string> gsm;
    std::string flaw;
  } rows[] = {
      {"0,1.5,4.2,-12", {}, ""},
      {"0,5,20,0", {}, ""},
      {"0,5.01,20.0,0", {"GSM Rms Phase error."}, "GSM RMS phase error 5.01 is above 5."},
      {"0,5.0,20.0001,0", {"GSM Peak Phase error."}, "GSM peak phase error 20.0001 is above 20."},
      {"0,9,21.5,0",
       {"GSM Peak Phase error.", "GSM Rms Phase error."},
       "GSM peak phase error 21.5 is above 20. GSM RMS phase error 9 is above 5."},
  };
  for (const auto& row : rows) {
    phaseReading = row.reading;
    boxes.shown.clear();
    Note();
    ClickGsm();
    EXPECT_EQ(boxes.Texts(), row.gsm) << row.reading;
    for (const Box& box : boxes.shown) EXPECT_EQ(box.title, "Warning");
    EXPECT_EQ(Flaws(), row.flaw);
    EXPECT_TRUE(cal.GsmCalDone);
    EXPECT_FALSE(cal.CalFailed);
  }
  phaseReading = "0,9,21.5,0";
  boxes.shown.clear();
  ClickDcs();
  EXPECT_THAT(boxes.Texts(), ElementsAre("DCS Peak Phase error.", "DCS Rms Phase error."));
}

TEST_F(PhaseCheckRun, AFailingLastCommandLeavesNoVerdict) {
  phaseReading = "0,9,21.5,0";
  during["rfe 0"] = [this, times = 0]() mutable {
    if (++times == 2) failing = {"rfe 0"};
  };
  ClickGsm();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), Contains("Peak(GSM)\t62\t21.5"));
}

TEST_F(PhaseCheckRun, ItsRowsShowAFixedChannelAndFourDecimals) {
  panel.txtARFCN.SetText("40");
  phaseReading = "0,1.00005,4.123456,0";
  ClickGsm();
  EXPECT_THAT(CommandsOf("rfpw 2 "), ElementsAre("40", "5", "5", "124", "124", "975", "975", "40"));
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), Contains("Peak(GSM)\t62\t4.1235"));
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), Contains("RMS(GSM)\t62\t1"));
}

TEST_F(PhaseCheckRun, AReplyWithTooFewFieldsStopsEverything) {
  phaseReading = "0,1.5,4.2";
  ClickGsm();
  EXPECT_TRUE(outcome.has_value());
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), Not(Contains(HasSubstr("Peak(GSM)"))));
}

}  // namespace
}  // namespace orvane
