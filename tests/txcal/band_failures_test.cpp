#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

using BandFailures = test::TxDesk;

constexpr const char* kNever = "nobody sends this";

TEST_F(BandFailures, ACommandThatFailsEndsTheRunThere) {
  const struct {
    bool dcs;
    const char* command;
  } rows[] = {
      {false, "txpw 8 0"},  {false, "txpw 9 0"},  {false, "rfpw 2 62"}, {false, "rfpw 1 62"}, {false, "txpw 1 19"},
      {false, "rfe 2"},     {false, "txpw 1 12"}, {true, "txpw 8 0"},   {true, "txpw 9 0"},   {true, "rfpw 2 699"},
      {true, "rfpw 1 699"}, {true, "rfe 2"},      {true, "txpw 1 115"}, {true, "txpw 4 48"},
  };
  for (const bool answers : {true, false}) {
    for (const auto& row : rows) {
      (answers ? failing : silent) = {row.command};
      cal.CalFailed = cal.CalStopRequested = false;
      journal.Clear();
      Note();
      row.dcs ? ClickDcs() : ClickGsm();
      EXPECT_EQ(Commands().back(), row.command);
      EXPECT_EQ(cal.CalFailed, answers) << row.command << ": only a status fails the unit";
      EXPECT_EQ(cal.CalStopRequested, answers) << row.command;
      EXPECT_EQ(Flaws(),
                std::string("\"") + row.command + (answers ? "\" failed with status 5." : "\" brought no reply."));
      EXPECT_FALSE(row.dcs ? cal.DcsCalDone : cal.GsmCalDone);
      failing.clear();
      silent.clear();
    }
  }
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(BandFailures, GsmDoesNotLookAtTheStatusOfADacValue) {
  silent = {"txpw 4 48"};
  ClickGsm();
  EXPECT_TRUE(cal.GsmCalDone);
  EXPECT_EQ(state.tally.silentWaits, 1);
}

TEST_F(BandFailures, AStopIsHeardBetweenTwoRampTables) {
  serial.answer = [&, tables = 0](const test::SentCommand& command) mutable {
    if (command.operation == 56 && ++tables == 4) op.Click(panel.cmdAutoCalStop);
    return test::PaddedReply(command.operation, 0);
  };
  Note();
  ClickDcs();
  EXPECT_THAT(CommandsOf("ttw "), SizeIs(4));
  EXPECT_EQ(Commands().back(), "rfe 0");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_FALSE(cal.DcsCalDone);
  EXPECT_EQ(Flaws(), "Stopped ahead of ramp table 4.");
}

TEST_F(BandFailures, ATargetThatDoesNotAnswerFiveRampTablesInARowEndsTheRun) {
  serial.answer = [](const test::SentCommand& command) {
    return command.operation == 56 ? std::string() : test::PaddedReply(command.operation, 0);
  };
  ClickDcs();
  EXPECT_EQ(outcome, "The Target does not answer.");
  EXPECT_THAT(CommandsOf("ttw "), SizeIs(5));
}

TEST_F(BandFailures, ATestSetThatIsNotInitializedEndsTheRun) {
  state.testSet.TestSetReady = false;
  Note();
  ClickGsm();
  ASSERT_THAT(boxes.shown, SizeIs(1));
  EXPECT_EQ(boxes.shown[0].text, "Initialize Test Set at first.");
  EXPECT_EQ(boxes.shown[0].title, "Warning");
  EXPECT_EQ(Commands().back(), "rfpw 1 62");
  EXPECT_THAT(bus.At(1).lines, IsEmpty());
  EXPECT_FALSE(cal.CalStopRequested);
  EXPECT_FALSE(cal.CalFailed);
  EXPECT_EQ(Flaws(), "The test set is not initialized.");
}

TEST_F(BandFailures, AnIncompleteFirstRampTableEndsTheGsmRun) {
  for (const std::size_t k : {0U, 7U, 15U}) {
    const std::string kept = std::exchange(state.ramp.RampTable[0][k], "");
    boxes.shown.clear();
    cal.CalStopRequested = false;
    panel.cmdAutoCalStop.SetBackColor(kButtonFace);
    results.listPeakPower.AddItem("earlier");
    results.listPowerLevel.AddItem("earlier");
    Note();
    ClickGsm();
    EXPECT_THAT(boxes.Texts(), ElementsAre("Ramp Table is not Correct or not exists."));
    EXPECT_EQ(boxes.shown[0].title, "Warning");
    EXPECT_THAT(results.listPeakPower.Items(), IsEmpty());
    EXPECT_THAT(results.listPowerLevel.Items(), IsEmpty());
    EXPECT_TRUE(cal.CalStopRequested);
    EXPECT_FALSE(cal.CalFailed);
    EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
    EXPECT_EQ(Commands().back(), "rfpw 1 62") << "the transmitter is as it was";
    EXPECT_EQ(Flaws(), "Ramp table 0 is not complete.");
    state.ramp.RampTable[0][k] = kept;
  }
}

TEST_F(BandFailures, DcsDoesNotTestTheRampTable) {
  state.ramp.RampTable[0][3] = "";
  ClickDcs();
  EXPECT_THAT(CommandsOf("ttw "), SizeIs(31));
  EXPECT_TRUE(outcome.has_value()) << "only the copy into the record finds the value that is no number";
  EXPECT_EQ(Commands().back(), "rfe 0");
  EXPECT_FALSE(cal.DcsCalDone);
}

TEST_F(BandFailures, AStopDuringTheSetUpPutsTheTransmitterOffWithoutRedness) {
  during["rfpw 1 62"] = [this] { cal.CalStopRequested = true; };
  Note();
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +11");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kButtonFace);
  EXPECT_EQ(Flaws(), "Stopped ahead of the first GSM level.");
}

TEST_F(BandFailures, AStopIsServedAheadOfALevel) {
  reading = [this] {
    if (dac == 51) cal.CalStopRequested = true;
    return UsualPower(levelWord, dac).Text();
  };
  Note();
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +6");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_TRUE(cal.CalStopRequested);
  EXPECT_FALSE(cal.CalFailed);
  EXPECT_EQ(Flaws(), "Stopped ahead of GSM level 17.");
  EXPECT_EQ(Record(0).tx_Level[18].apc, 51) << "what was stored stays";
  EXPECT_EQ(Record(0).tx_Level[17].apc, 0);
}

TEST_F(BandFailures, AStopIsServedAheadOfAPass) {
  during["txpw 1 17"] = [this] { op.Click(panel.cmdAutoCalStop); };
  Note();
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +11");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_EQ(cal.CalMode, "Stop");
  EXPECT_EQ(Flaws(), "Stopped at GSM level 17.");
  EXPECT_EQ(Commands()[Commands().size() - 2], "txpw 1 17");
}

TEST_F(BandFailures, AFailingTransmitterOffCostsNoPaces) {
  during["txpw 1 17"] = [this] { cal.CalStopRequested = true; };
  failing = {"rfe 0"};
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +62500") << "the reply wait of 2.5 s, and no more";
}

TEST_F(BandFailures, GsmSpendsAllSixRetriesEvenIfALaterReadingComes) {
  int readings = 0;
  reading = [&readings] { return std::string(++readings == 1 ? "" : "7"); };
  Note();
  ClickGsm();
  EXPECT_THAT(
      Trace("Target: txpw 4 48", kNever),
      ElementsAre("Target: txpw 4 48 +6", "1: SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON", "1: INITIATE:TXPOWER +6",
                  "1: FETC:TXP:POW? +4",  //
                  "Target: txpw 4 58", "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4", "Target: txpw 4 58",
                  "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4", "Target: txpw 4 58", "1: INITIATE:TXPOWER +6",
                  "1: FETC:TXP:POW? +4", "Target: txpw 4 58", "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4",
                  "Target: txpw 4 58", "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4", "Target: txpw 4 58",
                  "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4", "box: Can't measure Power."));
  EXPECT_EQ(boxes.shown[0].title, "Warning");
  EXPECT_TRUE(cal.CalStopRequested);
  EXPECT_TRUE(cal.CalFailed);
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kButtonFace);
  EXPECT_EQ(Flaws(),
            "The test set gave an empty reading at GSM level 19. No power could be measured at GSM level 19.");
}

TEST_F(BandFailures, DcsEndsItsRetriesAtTheFirstReadingAndSaysAtWhichDacItWasTaken) {
  int readings = 0;
  reading = [&readings, this] { return ++readings < 3 ? std::string("") : UsualPower(levelWord, 48).Text(); };
  failing = {"txpw 1 114"};
  Note(RunStep::TransmitDcs);
  ClickDcs();
  EXPECT_THAT(CommandsOf("txpw 4 "), ElementsAre("48", "58", "58"));
  EXPECT_EQ(Record(1).tx_Level[15].apc, 48) << "the retry leaves the value alone";
  EXPECT_THAT(Flaws(), HasSubstr("DCS level 15 was measured at DAC 58, but 48 stands."));
}

TEST_F(BandFailures, DcsFailsTheUnitAfterSixEmptyRetriesOnly) {
  for (const int answersAt : {7, 8}) {
    int readings = 0;
    boxes.shown.clear();
    cal.CalFailed = cal.CalStopRequested = false;
    reading = [&readings, answersAt] { return std::string(++readings < answersAt ? " \r" : "3"); };
    failing = {"txpw 1 114"};
    ClickDcs();
    EXPECT_EQ(boxes.shown.size(), answersAt == 7 ? 0U : 1U);
    EXPECT_EQ(Record(1).tx_Level[15].apc, answersAt == 7 ? 48 : 0);
    Record(1).tx_Level[15].apc = 0;
  }
  EXPECT_THAT(boxes.Texts(), ElementsAre("Can't measure Power."));
}

TEST_F(BandFailures, ARetryThatTheTargetRefusesEndsTheRun) {
  reading = [] { return std::string(""); };
  failing = {"txpw 4 58"};
  Note();
  ClickGsm();
  EXPECT_EQ(Commands().back(), "txpw 4 58");
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(Flaws(), "The test set gave an empty reading at GSM level 19. \"txpw 4 58\" failed with status 5.");
}

TEST_F(BandFailures, AReadingAboveFortyFailsTheUnit) {
  for (const char* text : {"40.01", "40.000000001", "9.91E+37"}) {
    reading = [text] { return std::string(text); };
    boxes.shown.clear();
    cal.CalFailed = cal.CalStopRequested = false;
    journal.Clear();
    Note();
    ClickGsm();
    EXPECT_THAT(boxes.Texts(), ElementsAre(" Error in measuring Power.")) << text;
    EXPECT_EQ(boxes.shown[0].title, "Warning");
    EXPECT_TRUE(cal.CalStopRequested);
    EXPECT_TRUE(cal.CalFailed);
    EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
    EXPECT_THAT(Commands(), Not(Contains("rfe 0"))) << "the transmitter stays on";
    EXPECT_EQ(Flaws(), "The reading at GSM level 19 is too high: " + std::string(text) + ".");
  }
}

TEST_F(BandFailures, AReadingOfExactlyFortyPasses) {
  bool first = true;
  reading = [&first, this] { return std::exchange(first, false) ? "40.0" : UsualPower(levelWord, dac).Text(); };
  ClickGsm();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_EQ(results.listPeakPower.Items()[1], "48\t40");
}

TEST_F(BandFailures, AReadingThatIsNoNumberOrTooBigStopsEverything) {
  for (const char* text : {"-----", "-1E30"}) {
    reading = [text] { return std::string(text); };
    panel.cmdAutoCalStop.SetBackColor(kButtonFace);
    ClickGsm();
    EXPECT_TRUE(outcome.has_value()) << text;
    EXPECT_FALSE(cal.CalStopRequested);
    EXPECT_FALSE(cal.CalFailed);
    EXPECT_TRUE(panel.cmdGSM.Enabled()) << "the next run can start";
  }
}

TEST_F(BandFailures, ATestSetThatFallsSilentStopsEverything) {
  bus.At(1).silent = true;
  ClickGsm();
  EXPECT_TRUE(outcome.has_value());
  EXPECT_FALSE(cal.CalFailed);
  EXPECT_EQ(Commands().back(), "txpw 4 48");
}

TEST_F(BandFailures, TheHp8922MStopsTheRunAtTheFirstPassWhenTheBoxIsEmpty) {
  OpenTestSet("HP8922M");
  ClickGsm();
  EXPECT_TRUE(outcome.has_value());
  EXPECT_EQ(bus.At(1).lines.back(), "MEAS:FTCP?");
  EXPECT_THAT(results.listPeakPower.Items(), ElementsAre("lev(GSM)\tPow(GSM)"));
}

TEST_F(BandFailures, ARunOnOldTextIsNotTakenForACalibration) {
  OpenTestSet("HP8922M");
  panel.txtPeakPower.SetText("12");
  failing = {"rfpw 2 5"};
  Note();
  ClickGsm();
  EXPECT_THAT(Flaws(), HasSubstr("No power readings are taken from the selected test set."));
}

TEST_F(BandFailures, ASearchThatEndsAtItsLimitIsStoredWithoutAWord) {
  cal.InitValueIndex[0] = 1000;
  reading = [this] { return levelWord == 5 ? std::string("29.69") : UsualPower(levelWord, dac).Text(); };
  failing = {"rfpw 2 5"};
  Note();
  ClickGsm();
  EXPECT_EQ(Record(0).tx_Level[5].apc, 1020);
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Flaws(), HasSubstr("GSM level 5 stopped at DAC 1020, 2.31 dB from its target."));
}

TEST_F(BandFailures, ASearchThatStaysNearItsTargetIsStoredWithoutAWord) {
  reading = [this] { return levelWord == 5 ? std::string("31.9") : UsualPower(levelWord, dac).Text(); };
  failing = {"rfpw 2 5"};
  Note();
  ClickGsm();
  const auto dacs = CommandsOf("txpw 4 ");
  EXPECT_EQ(dacs.size(), 14U + 11U);
  EXPECT_EQ(std::to_string(Record(0).tx_Level[5].apc), dacs.back());
  EXPECT_THAT(Flaws(), HasSubstr("GSM level 5 stopped at DAC " + dacs.back() + ", 0.1 dB from its target."));
}

TEST_F(BandFailures, ALevelThatTheOldPowerServesIsStoredUntried) {
  cal.PowerIndex[13] = "7.1"_d4;
  failing = {"rfpw 2 5"};
  Note();
  ClickGsm();
  EXPECT_EQ(Record(0).tx_Level[18].apc, 50) << "one below the table's value";
  EXPECT_THAT(Flaws(), HasSubstr("GSM level 18 was never measured; DAC 50 stands untried."));
}

TEST_F(BandFailures, TheFirstLevelStartsFromAFixedPowerAndAQuarterDecibel) {
  const struct {
    bool dcs;
    const char* target;
    bool served;
  } rows[] = {{false, "1.25", true}, {false, "1.2501", false}, {true, "-4.75", true}, {true, "-4.7499", false}};
  for (const auto& row : rows) {
    cal.PowerIndex[row.dcs ? 30 : 14] = Decimal4::FromText(row.target);
    reading = [&row] { return std::string(row.target); };
    failing = {row.dcs ? "txpw 1 114" : "txpw 1 18"};
    Note();
    row.dcs ? ClickDcs() : ClickGsm();
    EXPECT_EQ(Record(row.dcs ? 1 : 0).tx_Level[row.dcs ? 15 : 19].apc, row.served ? 47 : 48) << row.target;
    EXPECT_EQ(Flaws().find("was never measured") != std::string::npos, row.served) << row.target;
  }
}

TEST_F(BandFailures, APowerThatSwingsAroundItsTargetForGoodStopsTheRun) {
  // A step in the power curve: 4 dB between two DAC values, the target in its middle.
  reading = [this] { return std::string(dac >= 60 ? "9" : "5"); };
  ClickGsm();
  ASSERT_TRUE(outcome.has_value());
  EXPECT_THAT(*outcome, HasSubstr("The power does not settle at GSM level 19"));
  EXPECT_FALSE(cal.CalFailed);
  EXPECT_FALSE(cal.CalStopRequested);
  EXPECT_THAT(results.listPeakPower.Items(), SizeIs(1 + 1100)) << "the head, and a row a pass";
}

TEST_F(BandFailures, FlagsThatStoodWhenThePowerWouldNotSettleStayAsTheyWere) {
  reading = [this] { return std::string(dac >= 60 ? "9" : "5"); };
  cal.CalFailed = true;
  ClickGsm();
  ASSERT_TRUE(outcome.has_value());
  EXPECT_TRUE(cal.CalFailed);
}

TEST_F(BandFailures, APowerTooFarOffForAnErrorLeavesNoRow) {
  reading = [] { return std::string("-922337203685477.5808"); };
  ClickGsm();
  ASSERT_TRUE(outcome.has_value());
  EXPECT_THAT(*outcome, HasSubstr("Overflow"));
  EXPECT_THAT(results.listPeakPower.Items(), ElementsAre("lev(GSM)\tPow(GSM)"));
}

TEST_F(BandFailures, AnEmptyToleranceBoxStopsEverything) {
  panel.txtErrorRate.SetText("");
  ClickGsm();
  EXPECT_TRUE(outcome.has_value());
  EXPECT_EQ(results.listPeakPower.Items().back(), "48\t7") << "the pass has left its row";
}

}  // namespace
}  // namespace orvane
