#include "txcal/channel_step.h"

#include "platform/operation_nest.h"
#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(ChannelCode, GoesUpBothWaysForGsmAndDownBelowTheReferenceForDcs) {
  const struct {
    int size;
    Integer above;
    Integer belowGsm;
    Integer belowDcs;
  } rows[] = {
      {0, 128, 128, 128},  {9, 128, 128, 128},  {10, 129, 129, 127}, {18, 129, 129, 127},
      {19, 130, 130, 126}, {20, 130, 130, 126}, {28, 130, 130, 126}, {29, 131, 131, 125},
      {38, 131, 131, 125}, {39, 132, 132, 124}, {40, 132, 132, 124}, {700, 132, 132, 124},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ChannelCodeFor(kGsmBand, row.size), row.above) << row.size;
    EXPECT_EQ(ChannelCodeFor(kDcsBand, row.size), row.above) << row.size;
    EXPECT_EQ(ChannelCodeFor(kGsmBand, -row.size), row.belowGsm) << -row.size;
    EXPECT_EQ(ChannelCodeFor(kDcsBand, -row.size), row.belowDcs) << -row.size;
  }
}

TEST(ChannelCode, TheFourthNeedsBothItsNeighbours) {
  EXPECT_EQ(FourthCodeOf({128, 129, 130, 0}), 129);
  EXPECT_EQ(FourthCodeOf({128, 129, 128, 0}), 128);
  EXPECT_EQ(FourthCodeOf({129, 128, 130, 0}), 128);
}

/// The channel that the Target was tuned to last adds what its unit needs more there.
struct ChannelDesk : test::TxDesk {
  ChannelDesk() {
    reading = [this] { return UsualPower(levelWord, dac - more[bus.At(1).lines.empty() ? "" : Channel()]).Text(); };
  }
  std::string Channel() const {
    std::string channel;
    for (const std::string& line : CommandsOf("rfpw 1 ")) channel = line;
    return channel;
  }
  /// DAC steps more that a channel needs.
  std::map<std::string, int> more;

  std::vector<int> Limits(std::size_t band, int table) {
    std::vector<int> limits;
    for (int b = 0; b < 8; ++b) limits.push_back(Record(band).chan_cal(table, b).arfcn_limit);
    return limits;
  }
  std::vector<int> Codes(std::size_t band, int table) {
    std::vector<int> codes;
    for (int b = 0; b < 8; ++b) codes.push_back(Record(band).chan_cal(table, b).chan_cal);
    return codes;
  }
};

using ChannelStepRun = ChannelDesk;

TEST_F(ChannelStepRun, TunesAndMeasuresEachGsmChannelAtLevel5) {
  ClickGsm();
  const auto trace = Trace("Target: rfpw 2 5", "Target: rfpw 2 124");
  EXPECT_THAT(trace, ElementsAre("Target: rfpw 2 5 +6", "Target: rfpw 1 5 +6", "1: RFAN:MAN:CHAN:SELECTED 5",
                                 "1: CALL:BCH:SEQ 5", "1: CALL:TCH:SEQ 5 +54", "Target: rfpw 2 5 +6",
                                 "Target: rfpw 1 5 +6", "Target: txpw 1 5 +6", "1: RFAN:EXP:POWER:SELECTED 32 +13",
                                 "Target: txpw 4 600 +6", "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4"));
  // 101 paces lie between the last level and the first channel.
  EXPECT_EQ(Trace("Target: txpw 1 5", "Target: rfpw 2 5").back(), "1: FETC:TXP:POW? +105");
}

TEST_F(ChannelStepRun, TunesAndMeasuresEachDcsChannelAtLevel0) {
  ClickDcs();
  EXPECT_THAT(Trace("1: RFAN:MAN:CHAN:SELECTED 512", "1: RFAN:MAN:CHAN:SELECTED 781"),
              ElementsAre("1: RFAN:MAN:CHAN:SELECTED 512", "1: CALL:BCH:SEQ 512", "1: CALL:TCH:SEQ 512 +104",
                          "Target: rfpw 2 512 +6", "Target: rfpw 1 512 +6", "Target: txpw 1 100 +6",
                          "1: RFAN:EXP:POWER:SELECTED 29 +13", "Target: txpw 4 720 +6", "1: INITIATE:TXPOWER +6",
                          "1: FETC:TXP:POW? +4"));
  EXPECT_EQ(Trace("Target: txpw 1 100", "1: RFAN:MAN").back(), "1: FETC:TXP:POW? +55");
}

TEST_F(ChannelStepRun, TellsEveryTestSetTheChannelTheSameWay) {
  for (const char* kind : {"HP8922M", "4400M(WaveTek)"}) {
    OpenTestSet(kind);
    panel.txtPeakPower.SetText("29");
    journal.Clear();
    ClickDcs();
    EXPECT_THAT(Trace("1: RFAN:MAN:CHAN:SELECTED 781", "Target: "),
                ElementsAre("1: RFAN:MAN:CHAN:SELECTED 781 +104"));
  }
}

TEST_F(ChannelStepRun, EchoesItsLines) {
  ClickGsm();
  EXPECT_THAT(panels.main.txtResults.Text(),
              HasSubstr("RFAN:MAN:CHAN:SELECTED 975\r\nCALL:BCH:SEQ 975\r\nCALL:TCH:SEQ 975\r\n"));
}

TEST_F(ChannelStepRun, TurnsGsmDifferencesIntoCodes) {
  more = {{"124", -24}, {"975", 24}};
  for (int table = 0; table < 4; ++table) {
    for (int b = 0; b < 8; ++b) Record(0).chan_cal(table, b) = {7, 99};
  }
  ClickGsm();
  EXPECT_EQ(Limits(0, 2), (std::vector{10, 114, 124, 980, 1023, 1023, 1023, 1023}));
  EXPECT_EQ(Limits(0, 3), Limits(0, 2));
  EXPECT_EQ(Codes(0, 2), (std::vector{99, 99, 99, 99, 99, 99, 99, 99})) << "the corrections stay";
  EXPECT_EQ(Codes(0, 3), (std::vector{128, 128, 130, 130, 128, 128, 128, 128}));
  EXPECT_EQ(Codes(0, 1), (std::vector{99, 99, 99, 99, 99, 99, 99, 99}));
  EXPECT_EQ(Codes(1, 3), (std::vector{0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(ChannelStepRun, TurnsDcsDifferencesIntoCodes) {
  more = {{"512", -24}, {"781", 24}, {"885", 60}};
  for (auto& band : state.rf.RFParams.BAND) {
    for (int table = 0; table < 4; ++table) {
      for (int b = 0; b < 8; ++b) band.chan_cal(table, b) = {7, 99};
    }
  }
  ClickDcs();
  EXPECT_EQ(Limits(1, 2), (std::vector{520, 770, 790, 821, 885, 886, 990, 1023}));
  EXPECT_EQ(Limits(1, 3), Limits(1, 2));
  EXPECT_EQ(Codes(1, 3), (std::vector{126, 128, 130, 130, 132, 128, 128, 128}));
  const std::vector neutral(8, 128), kept(8, 99), keptLimits(8, 7);
  EXPECT_EQ(Codes(1, 2), neutral);
  EXPECT_EQ(Codes(0, 2), neutral) << "the entry makes both bands neutral";
  EXPECT_EQ(Codes(0, 3), neutral);
  EXPECT_EQ(Codes(0, 1), kept);
  EXPECT_EQ(Limits(0, 3), keptLimits);
}

TEST_F(ChannelStepRun, ADcsSegmentBetweenIsNeutralUnlessBothNeighboursAreCorrected) {
  more = {{"781", 15}, {"885", 0}};
  ClickDcs();
  EXPECT_EQ(Codes(1, 3), (std::vector{128, 128, 129, 128, 128, 128, 128, 128}));
}

TEST_F(ChannelStepRun, LeavesRowsOnTheResultPanel) {
  results.listChanCalPeakPower.AddItem("earlier");
  results.listChanCalPowerLevel.AddItem("earlier");
  ClickGsm();
  EXPECT_THAT(results.listChanCalPeakPower.Items(),
              ElementsAre("earlier", "lev(GSM)\tPow(GSM)", "600\t32", "600\t5\t32", "600\t32", "600\t5\t32",
                          "600\t32", "600\t5\t32"));
  EXPECT_THAT(results.listChanCalPowerLevel.Items(),
              ElementsAre("earlier", "lev(GSM)CH(GSM)\tPow(GSM)", "600\t5\t128", "600\t124\t128", "600\t975\t128",
                          "Peak(GSM)\t62\t4.2", "RMS(GSM)\t62\t1.5"));
}

TEST_F(ChannelStepRun, ClearsTheListsForDcs) {
  results.listChanCalPeakPower.AddItem("earlier");
  results.listChanCalPowerLevel.AddItem("earlier");
  ClickDcs();
  EXPECT_THAT(results.listChanCalPeakPower.Items(), ElementsAre("lev(DCS)\tPow(DCS)", "720\t29", "720\t0\t29",
                                                                "720\t29", "720\t0\t29", "720\t29", "720\t0\t29"));
  EXPECT_THAT(results.listChanCalPowerLevel.Items(),
              ElementsAre("lev(DCS)\tCH(DCS)\tPow(DCS)", "720\t512\t128", "720\t781\t128", "720\t885\t128",
                          "Peak(DCS)\t699\t4.2", "RMS(DCS)\t699\t1.5"));
}

TEST_F(ChannelStepRun, AFailingCommandEndsTheRun) {
  for (const char* command : {"rfpw 2 5", "rfpw 1 5", "rfpw 2 975", "rfpw 1 975", "txpw 1 5", "txpw 4 600"}) {
    failing = {command};
    // The level itself is over when channel 5 comes.
    during["rfpw 1 5"] = [this, command] { failing = {command}; };
    if (std::string(command).starts_with("txpw")) failing.clear();
    journal.Clear();
    cal.CalFailed = cal.CalStopRequested = false;
    Note();
    ClickGsm();
    EXPECT_EQ(Commands().back(), command);
    EXPECT_EQ(Flaws(), std::string("\"") + command + "\" failed with status 5.");
    EXPECT_FALSE(cal.GsmCalDone);
    EXPECT_THAT(boxes.shown, IsEmpty());
  }
}

TEST_F(ChannelStepRun, AStopIsServedAheadOfEachChannel) {
  during["rfpw 1 975"] = [this] { cal.CalStopRequested = true; };
  Note();
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +6");
  EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
  EXPECT_EQ(Flaws(), "Stopped ahead of GSM channel 975.");
}

TEST_F(ChannelStepRun, AStopIsServedAheadOfAPassToo) {
  during["rfpw 1 975"] = [this] { during["txpw 1 5"] = [this] { cal.CalStopRequested = true; }; };
  Note();
  ClickGsm();
  EXPECT_EQ(Trace().back(), "Target: rfe 0 +11");
  EXPECT_EQ(Flaws(), "Stopped at GSM channel 975.");
}

TEST_F(ChannelStepRun, AReadingAboveFortyStopsTheRunButDoesNotFailTheUnit) {
  for (const char* text : {"40.51", "41"}) {
    during["rfpw 1 5"] = [this, text] { reading = [text] { return std::string(text); }; };
    reading = [this] { return UsualPower(levelWord, dac).Text(); };
    cal.CalStopRequested = false;
    boxes.shown.clear();
    Note();
    ClickGsm();
    ASSERT_THAT(boxes.Texts(), ElementsAre(" Auto Cal is not Completed. Re-try.")) << text;
    EXPECT_EQ(boxes.shown[0].title, "Warning");
    EXPECT_TRUE(cal.CalStopRequested);
    EXPECT_FALSE(cal.CalFailed);
    EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kRed);
    EXPECT_EQ(Commands().back(), "txpw 4 600");
    EXPECT_EQ(Flaws(), "The reading at GSM channel 5 is too high: " + std::string(text) + ".");
  }
}

TEST_F(ChannelStepRun, AReadingThatRoundsToFortyPassesAndOneThatOverflowsStopsEverything) {
  during["rfpw 1 5"] = [this] {
    reading = [this, first = true]() mutable {
      return std::exchange(first, false) ? "40.5" : UsualPower(levelWord, dac).Text();
    };
  };
  ClickGsm();
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_TRUE(cal.GsmCalDone);
  for (const char* text : {"9.91E+37", "40000"}) {
    reading = [this] { return UsualPower(levelWord, dac).Text(); };
    during["rfpw 1 5"] = [this, text] { reading = [text] { return std::string(text); }; };
    ClickGsm();
    EXPECT_TRUE(outcome.has_value()) << text;
    EXPECT_FALSE(cal.CalStopRequested);
  }
}

TEST_F(ChannelStepRun, AnEmptyReadingGetsOneRetryFiftyHigher) {
  during["rfpw 1 5"] = [this] {
    reading = [this, readings = 0]() mutable {
      return ++readings == 1 ? std::string("") : UsualPower(levelWord, dac - 50).Text();
    };
  };
  Note();
  ClickGsm();
  EXPECT_THAT(Trace("Target: txpw 1 5", "Target: rfpw", 2),
              ElementsAre("Target: txpw 1 5 +6", "1: RFAN:EXP:POWER:SELECTED 32 +13", "Target: txpw 4 600 +6",
                          "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4", "Target: txpw 4 650",
                          "1: INITIATE:TXPOWER +6", "1: FETC:TXP:POW? +4"));
  EXPECT_THAT(Flaws(), HasSubstr("GSM channel 5 was measured at DAC 650, but 600 stands."));
}

TEST_F(ChannelStepRun, AnEmptyReadingThatSurvivesItsRetryStopsEverything) {
  during["rfpw 1 5"] = [this] { reading = [] { return std::string(""); }; };
  ClickGsm();
  EXPECT_TRUE(outcome.has_value());
  EXPECT_EQ(Commands().back(), "txpw 4 650");
  EXPECT_FALSE(cal.CalFailed);
}

TEST_F(ChannelStepRun, AChannelThatTheStartPowerServesIsUntried) {
  cal.PowerIndex[0] = 30;
  cal.PowerIndex[1] = 28;
  Note();
  ClickGsm();
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), Contains("599\t124\t128"));
  EXPECT_THAT(Flaws(), HasSubstr("GSM channel 124 was never measured; DAC 599 stands untried."));
}

TEST_F(ChannelStepRun, EachChannelStartsFromAFixedPowerAndATenthOfADecibel) {
  const struct {
    bool dcs;
    const char* target;
    bool served;
  } rows[] = {{false, "30.1", true}, {false, "30.1001", false}, {true, "27.1", true}, {true, "27.1001", false}};
  for (const auto& row : rows) {
    const std::size_t strongest = row.dcs ? 15 : 0;
    cal.PowerIndex[strongest] = Decimal4::FromText(row.target);
    cal.PowerIndex[strongest + 1] = row.dcs ? "26.5"_d4 : "29.5"_d4;
    Note();
    row.dcs ? ClickDcs() : ClickGsm();
    EXPECT_EQ(Flaws().find("was never measured") != std::string::npos, row.served) << row.target;
  }
}

TEST_F(ChannelStepRun, AChannelThatMissesItsTargetIsAFlaw) {
  during["rfpw 1 885"] = [this] { reading = [] { return std::string("28.6"); }; };
  Note();
  ClickDcs();
  EXPECT_THAT(Flaws(), ::testing::MatchesRegex("DCS channel 885 stopped at DAC [0-9]+, 0.4 dB from its target."));
}

TEST_F(ChannelStepRun, ACodeThatWasNotSetLetsTheOperatorEndTheStation) {
  RunSteps steps({link, testSet, console, boxes, panels.autoCal, panels.txResult, state.cal, state.rf, state.ramp,
                  state.report, state.searchTrail});
  const TxRunParts parts{link,      testSet,  console,    boxes,        panels.autoCal,   panels.txResult,
                         state.cal, state.rf, state.ramp, state.report, state.searchTrail};
  SearchRun searchRun(parts, steps);
  ChannelStep step(parts, steps, searchRun);
  step.LookAfter({128, 124, 132, 128});
  EXPECT_THAT(boxes.shown, IsEmpty());

  Note(RunStep::TransmitDcs);
  boxes.answers = {BoxButton::Ok, BoxButton::Cancel};
  step.LookAfter({128, 0, 128, 128});
  ASSERT_EQ(boxes.shown.size(), 2U);
  EXPECT_EQ(boxes.shown[0].text, "Tx CH CAL is not Completed. Re-Start.");
  EXPECT_EQ(boxes.shown[0].title, "Alarm");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Information);
  EXPECT_EQ(boxes.shown[1].text, "Do you want to finish Orvane?");
  EXPECT_EQ(boxes.shown[1].title, "Exit");
  EXPECT_THAT(boxes.shown[1].buttons, ElementsAre(BoxButton::Ok, BoxButton::Cancel));
  EXPECT_EQ(Flaws(), "A channel code was not set.");

  boxes.answers = {BoxButton::Ok, BoxButton::Ok};
  EXPECT_THROW(step.LookAfter({128, 128, 128, 0}), StationEnded);
}

}  // namespace
}  // namespace orvane
