#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using BandRun = test::TxDesk;

TEST_F(BandRun, SetsUpTheHp8960ForGsm) {
  cal.DcsCalDone = true;
  ClickGsm();
  EXPECT_THAT(
      Trace("Target: txpw 8 0", "Target: txpw 1 18"),
      ElementsAre("Target: txpw 8 0 +6", "Target: txpw 9 0 +6", "Target: rfpw 2 62 +6", "Target: rfpw 1 62 +6",
                  "1: CALL:CELL:BAND EGSM", "1: CALL:OPERATING:MODE TEST", "1: RFAN:MAN:CHAN:SELECTED 62",
                  "1: CALL:MS:TXL:SEQ 19", "1: INIT:PVTIME", "1: INIT:TXP", "1: CALL:BCH:SEQ 62",
                  "1: CALL:TCH:SEQ 62", "1: CALL:FUNCTION:DOWNLINK BCHTCH", "1: SYST:CORR:SGA -0.5 +104",
                  "Target: txpw 1 19 +6", "Target: rfe 2 +11", "Target: txpw 1 19 +6",
                  "1: RFAN:EXP:POWER:SELECTED 7 +13", "1: SETUP:TXPOWER:CONTINUOUS OFF +1",
                  "1: SETUP:TXPOWER:COUNT:SNUMBER 5 +1", "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO +1",
                  "Target: txpw 4 48 +6", "1: SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON", "1: INITIATE:TXPOWER +6",
                  "1: FETC:TXP:POW? +4"));
}

TEST_F(BandRun, SetsUpTheHp8960ForDcs) {
  panel.txtdcsarfcn.SetText("700");
  panel.txtDCSLoss.SetText("-1.2");
  ClickDcs();
  auto trace = Trace("Target: txpw 8 0", "Target: txpw 1 114");
  // The download of the ramp tables stands between the set-up and the transmitter.
  ASSERT_THAT(trace, SizeIs(14 + 31 + 10));
  EXPECT_THAT(trace[44], EndsWith("29, +11"));
  trace.erase(trace.begin() + 14, trace.begin() + 45);
  EXPECT_THAT(
      trace,
      ElementsAre("Target: txpw 8 0 +6", "Target: txpw 9 0 +6", "Target: rfpw 2 700 +6", "Target: rfpw 1 700 +6",
                  "1: CALL:CELL:BAND DCS", "1: CALL:OPERATING:MODE TEST", "1: RFAN:MAN:CHAN:SELECTED 700",
                  "1: CALL:MS:TXL:SEQ 15", "1: INIT:PVTIME", "1: INIT:TXP", "1: CALL:BCH:SEQ 700",
                  "1: CALL:TCH:SEQ 700", "1: CALL:FUNCTION:DOWNLINK BCHTCH", "1: SYST:CORR:SGA -1.2 +104",
                  "Target: rfe 2 +6", "Target: txpw 1 115 +6", "1: RFAN:EXP:POWER:SELECTED 3 +13",
                  "1: SETUP:TXPOWER:CONTINUOUS OFF +1", "1: SETUP:TXPOWER:COUNT:SNUMBER 30 +1",
                  "1: SETUP:TXPOWER:TRIGGER:SOURCE AUTO +1", "Target: txpw 4 48 +6",
                  "1: SETUP:TXPOWER:TIMEOUT:TIME 2;STATE ON", "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4"));
}

TEST_F(BandRun, SetsUpTheHp8922MWithFourLinesAndMeasuresByOne) {
  const struct {
    bool dcs;
    const char* band;
    const char* channel;
    const char* power;
  } rows[] = {{false, "1: CONF:RAD 'E-GSM'", "1: RFAN:ARFC 62", "1: RFAN:AMPL1 7 +13"},
              // The level line stays that of GSM.
              {true, "1: CONF:RAD 'DCS1800'", "1: RFAN:ARFC 699", "1: RFAN:AMPL1 3 +13"}};
  for (const auto& row : rows) {
    OpenTestSet("HP8922M");
    panel.txtPeakPower.SetText(row.dcs ? "3.1" : "7.1");
    journal.Clear();
    if (row.dcs) {
      ClickDcs();
    } else {
      ClickGsm();
    }
    EXPECT_THAT(Trace("1: CONF", "Target: "),
                ElementsAre(row.band, "1: CELL:MODE 'TEST MODE'", row.channel, "1: CELL:MS:TLEV 19 +104"));
    EXPECT_THAT(Trace("1: RFAN:AMPL1", "Target: txpw 1"),
                ElementsAre(row.power, "Target: txpw 4 48 +6", "1: MEAS:FTCP?"));
  }
}

TEST_F(BandRun, WritesTheCommonLinesEmptyToATestSetWithoutDialect) {
  OpenTestSet("4400M(WaveTek)");
  panel.txtPeakPower.SetText("7.1");
  ClickGsm();
  EXPECT_THAT(Trace("1: ", "Target: "), ElementsAre("1: ", "1: ", "1: ", "1:  +104"));
  EXPECT_THAT(Trace("Target: txpw 1 19", "Target: txpw 1 18", 2),
              ElementsAre("Target: txpw 1 19 +6", "1:  +13", "Target: txpw 4 48 +6"))
      << "measuring writes nothing";
}

TEST_F(BandRun, EchoesTwoLinesOfTheGsmSetUpAsTheLinesBeforeThem) {
  ClickGsm();
  EXPECT_THAT(panels.main.txtResults.Text(),
              HasSubstr("CALL:MS:TXL:SEQ 19\r\nINIT:PVTIME\r\nINIT:PVTIME\r\nCALL:BCH:SEQ 62\r\nCALL:BCH:SEQ "
                        "62\r\nCALL:FUNCTION:DOWNLINK BCHTCH\r\nSYST:CORR:SGA -0.5\r\n"));
}

TEST_F(BandRun, EchoesTheDcsSetUpAsItIsSent) {
  ClickDcs();
  EXPECT_THAT(panels.main.txtResults.Text(),
              HasSubstr("CALL:MS:TXL:SEQ 15\r\nINIT:PVTIME\r\nINIT:TXP\r\nCALL:BCH:SEQ 699\r\nCALL:TCH:SEQ "
                        "699\r\nCALL:FUNCTION:DOWNLINK BCHTCH\r\nSYST:CORR:SGA -0.5\r\n"));
}

TEST_F(BandRun, ExpectsTheTargetPowerAsAWholeNumberAndEchoesIt) {
  const struct {
    const char* target;
    const char* whole;
  } rows[] = {{"6.5", "6"}, {"7.5", "8"}, {"7.4999", "7"}, {"-0.5", "0"}};
  failing = {"txpw 1 18"};
  for (const auto& row : rows) {
    cal.PowerIndex[14] = Decimal4::FromText(row.target);
    reading = [&row] { return std::string(row.target); };
    journal.Clear();
    ClickGsm();
    const std::string line = std::string("RFAN:EXP:POWER:SELECTED ") + row.whole;
    EXPECT_THAT(journal.Lines(), ::testing::Contains("1: " + line)) << row.target;
    EXPECT_THAT(panels.main.txtResults.Text(), HasSubstr("SYST:CORR:SGA -0.5\r\n" + line + "\r\n")) << row.target;
  }
}

TEST_F(BandRun, DownloadsAllRampTablesWithACommaBehindEveryValue) {
  ClickDcs();
  const auto tables = CommandsOf("ttw ");
  ASSERT_THAT(tables, SizeIs(31));
  EXPECT_EQ(tables[0], "0 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31,");
  EXPECT_EQ(tables[30], "30 30,31,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,");
}

TEST_F(BandRun, GsmSkipsTheRampDownloadOnceAnotherBandHasMadeIt) {
  ClickGsm();
  EXPECT_THAT(CommandsOf("ttw "), SizeIs(31));
  journal.Clear();
  cal.DcsCalDone = true;
  ClickGsm();
  EXPECT_THAT(CommandsOf("ttw "), IsEmpty());
  cal.DcsCalDone = false;
  cal.SpareCalDone = true;
  ClickGsm();
  EXPECT_THAT(CommandsOf("ttw "), IsEmpty());
}

TEST_F(BandRun, WalksGsmFromLevel19To5AndStoresEachDac) {
  ClickGsm();
  auto levels = CommandsOf("txpw 1 ");
  levels.resize(16);
  EXPECT_THAT(levels,
              ElementsAre("19", "19", "18", "17", "16", "15", "14", "13", "12", "11", "10", "9", "8", "7", "6", "5"));
  const int dacs[] = {600, 550, 430, 350, 284, 222, 176, 140, 115, 95, 80, 67, 56, 51, 48};
  for (std::size_t level = 5; level <= 19; ++level) {
    EXPECT_EQ(Record(0).tx_Level[level].apc, dacs[level - 5]) << level;
  }
  EXPECT_THAT(journal.Lines(), ::testing::Contains("1: RFAN:EXP:POWER:SELECTED 32"));
  EXPECT_EQ(Record(0).tx_Level[4].apc, 0);
  EXPECT_EQ(Record(1).tx_Level[5].apc, 0);
}

TEST_F(BandRun, WalksDcsFromLevel15To0WithAHundredOnTop) {
  ClickDcs();
  auto levels = CommandsOf("txpw 1 ");
  levels.resize(16);
  EXPECT_THAT(levels, ElementsAre("115", "114", "113", "112", "111", "110", "109", "108", "107", "106", "105", "104",
                                  "103", "102", "101", "100"));
  const int dacs[] = {720, 630, 500, 400, 330, 258, 205, 162, 130, 105, 90, 75, 63, 57, 52, 48};
  for (std::size_t level = 0; level <= 15; ++level) {
    EXPECT_EQ(Record(1).tx_Level[level].apc, dacs[level]) << level;
  }
}

TEST_F(BandRun, SetsTheSamplesUpAtTheFirstLevelAlone) {
  ClickGsm();
  int setUps = 0;
  for (const std::string& line : bus.At(1).lines) setUps += line == "SETUP:TXPOWER:COUNT:SNUMBER 5" ? 1 : 0;
  EXPECT_EQ(setUps, 2) << "once in the levels, once in the phase check";
}

TEST_F(BandRun, LeavesRowsOnTheResultPanelWithoutShowingItForGsm) {
  results.listPeakPower.AddItem("earlier");
  ClickGsm();
  EXPECT_FALSE(results.Visible());
  const auto& peaks = results.listPeakPower.Items();
  ASSERT_THAT(peaks, SizeIs(2 + 15));
  EXPECT_EQ(peaks[0], "earlier");
  EXPECT_EQ(peaks[1], "lev(GSM)\tPow(GSM)");
  EXPECT_EQ(peaks[2], "48\t7");
  EXPECT_EQ(peaks[16], "600\t32");
  const auto& levels = results.listPowerLevel.Items();
  ASSERT_THAT(levels, SizeIs(1 + 15));
  EXPECT_EQ(levels[0], "lev(GSM)\tLevel\tPow(GSM)");
  EXPECT_EQ(levels[1], "48\t19\t7");
  EXPECT_EQ(levels[15], "600\t5\t32");
}

TEST_F(BandRun, ShowsTheResultPanelForDcsWithFreshLists) {
  results.listPeakPower.AddItem("earlier");
  results.listPowerLevel.AddItem("earlier");
  ClickDcs();
  EXPECT_TRUE(results.Visible());
  EXPECT_EQ(results.listPeakPower.Items().front(), "lev(DCS)\tPow(DCS)");
  EXPECT_EQ(results.listPowerLevel.Items().front(), "lev(DCS)\tLevel\tAvgPow(DCS)");
  EXPECT_EQ(results.listPowerLevel.Items().back(), "720\t0\t29");
}

TEST_F(BandRun, SearchesUntilThePowerIsWithinItsTolerance) {
  // A unit that needs ten DAC steps more than usual.
  reading = [this] { return UsualPower(levelWord, dac - 10).Text(); };
  Note();
  ClickGsm();
  EXPECT_EQ(Flaws(), "");
  for (std::size_t level = 5; level <= 19; ++level) {
    const Decimal4 power = UsualPower(0, Record(0).tx_Level[level].apc - 10);
    const Decimal4 target = cal.PowerIndex[level - 5];
    EXPECT_LE((power - target).Abs(), ToleranceFor(kGsmTolerances, "0.1"_d4, power)) << level;
  }
}

TEST_F(BandRun, AStopFromBeforeIsForgottenByABandStartedByHand) {
  cal.CalStopRequested = true;
  panel.cmdAutoCalStop.SetBackColor(kRed);
  ClickGsm();
  EXPECT_FALSE(cal.CalStopRequested);
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kButtonFace);
  EXPECT_TRUE(cal.GsmCalDone);
}

TEST_F(BandRun, APendingStopCancelsABandOfATransmitRun) {
  cal.CalStopRequested = true;
  cal.CalMode = "TxALL";
  cal.DcsCalDone = true;
  results.listPeakPower.AddItem("earlier");
  Note(RunStep::TransmitDcs);
  ClickDcs();
  EXPECT_THAT(Trace(), ElementsAre("Target: rfe 0"));
  EXPECT_TRUE(cal.CalStopRequested);
  EXPECT_FALSE(cal.DcsCalDone) << "cleared ahead of everything";
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_FALSE(results.Visible());
  EXPECT_THAT(results.listPeakPower.Items(), ElementsAre("earlier"));
  EXPECT_EQ(Flaws(), "Stopped ahead of the DCS band.");
}

TEST_F(BandRun, TheOptionsOfTheChannelCalibrationChangeNothing) {
  ClickGsm();
  const auto commands = Commands();
  const Integer apc = Record(0).tx_Level[7].apc;
  journal.Clear();
  panel.optChanCal.Select();
  ClickGsm();
  EXPECT_EQ(Commands(), commands);
  EXPECT_EQ(Record(0).tx_Level[7].apc, apc);
}

}  // namespace
}  // namespace orvane
