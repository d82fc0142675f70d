#include "rx_rig.h"

namespace orvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

using Lines = std::vector<std::string>;

struct Channel {
  const char* arfcn;
  const char* low;
  const char* high;
};

constexpr Channel kChannels[] = {
    {"0", "934.933", "935.067"},     {"40", "942.933", "943.067"},    {"124", "959.733", "959.867"},
    {"512", "1805.133", "1805.267"}, {"574", "1817.533", "1817.667"}, {"636", "1829.933", "1830.067"},
    {"700", "1842.733", "1842.867"}, {"760", "1854.733", "1854.867"}, {"822", "1867.133", "1867.267"},
    {"885", "1879.733", "1879.867"}, {"975", "925.133", "925.267"},   {"1023", "934.733", "934.867"}};

/// What a test set understands, as its lines stand in its manual.
struct Kind {
  const char* name;
  const char* mode;
  const char* function;
  const char* egsm;
  const char* dcs;
  const char* amplitude;
  const char* traffic;
  const char* broadcast;
};

constexpr Kind kKinds[] = {
    {"HP8922M", "CELL:MODE 'TEST MODE'", "", "CONF:RAD 'E-GSM'", "CONF:RAD 'DCS1800'", "RFG:AMPL1 -74dBm",
     "CELL:CALL:TCH:ARFCN ", "CCON:SCEL1:ARFC "},
    {"HP8960", "CALL:OPERATING:MODE TEST", "CALL:FUNCTION:DOWNLINK CW", "CALL:CELL:BAND EGSM", "CALL:CELL:BAND DCS",
     "CALL:CELL:RFG:POWER:AMPLITUDE -74dBm", "CALL:TCH:SEQ ", "CALL:BCH:SEQ "},
    {"4400M(WaveTek)", "", "", "", "", "", "", ""}};

/// Everything that a default run sends, on both links.
Lines WholeRun(const Kind& kind) {
  const auto set = [](const std::string& line) { return "1: " + line; };
  const auto withChannel = [&](const std::string& head, const char* arfcn) {
    return set(head.empty() ? "" : head + arfcn);
  };
  Lines lines{"Target: rfpw 8 0", "Target: rxpw 1 40", "DownlinkParamSet",
              set(kind.mode),     set(kind.function),  set(kind.egsm)};
  for (std::size_t i = 0; i < 12; ++i) {
    const Channel& c = kChannels[i];
    const bool first = i == 0 || i == 3 || i == 10;
    if (i == 3) lines.push_back(set(kind.dcs));
    if (i == 10) lines.push_back(set(kind.egsm));
    if (first) lines.push_back(set("SYST:CORR:SGA -0.5"));
    if (i == 0) lines.push_back(set(kind.amplitude));
    lines.push_back(withChannel(kind.traffic, c.arfcn));
    lines.push_back(withChannel(kind.broadcast, c.arfcn));
    lines.push_back(set("CALL:CELL:RFG:FREQ " + std::string(c.high) + "MHz"));
    lines.push_back("Target: rfpw 2 " + std::string(c.arfcn));
    lines.push_back("Target: rfpw 1 " + std::string(c.arfcn));
    lines.push_back("Target: rxpw 8 0");
    for (int read = 0; read < (first ? 3 : 1); ++read) {
      lines.push_back("Target: rfe 1");
      lines.push_back("Target: sr 1 2");
    }
    lines.push_back(set("CALL:CELL:RFG:FREQ " + std::string(c.low) + "MHz"));
    lines.push_back("Target: rfe 1");
    lines.push_back("Target: sr 1 2");
  }
  lines.push_back("Target: rfpw 8 1");
  return lines;
}

TEST(RxRun, SendsItsLinesInOrderForEveryKindOfTestSet) {
  for (const Kind& kind : kKinds) {
    RxRig rig(kind.name);
    EXPECT_FALSE(rig.Run());
    EXPECT_THAT(rig.journal.Lines(), ElementsAreArray(WholeRun(kind))) << kind.name;
    EXPECT_TRUE(rig.state.reply.ReplyDone);
  }
}

TEST(RxRun, ShowsEachLineToTheTestSetOnTheConsole) {
  RxRig rig;
  rig.Run();
  std::string shown = rig.panels.main.txtResults.Text();
  EXPECT_THAT(shown, ::testing::HasSubstr("CALL:OPERATING:MODE TEST\r\nCALL:FUNCTION:DOWNLINK CW\r\n"
                                          "CALL:CELL:BAND EGSM\r\nSYST:CORR:SGA -0.5\r\n"));
}

TEST(RxRun, PacesStandBetweenTheCommands) {
  RxRig rig;
  rig.serial.delay = TimePoint{0};
  rig.panels.main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  std::vector<long> paces;
  rig.serial.answer = [&](const SentCommand& command) {
    paces.push_back(rig.loop.Now() / std::chrono::milliseconds(1));
    return rig.Answer(command);
  };
  rig.Run();
  // Set-up: "rfpw 8 0", "rxpw 1 40". First channel, 3 + 21 + 58 + 6 + 16 paces on: two "rfpw", "rxpw", two settling
  // rounds, the reading, and 3 paces later the one below the carrier. Second channel: 6 + 16 paces on.
  EXPECT_THAT(std::vector<long>(paces.begin(), paces.begin() + 16),
              ElementsAre(0, 0, 104, 107, 110, 110, 121, 121, 132, 132, 132, 135, 135, 157, 160, 163));
  // Third channel, then 108 paces more for the change of band.
  EXPECT_EQ(paces.at(20), 163 + 3 + 22);
  EXPECT_EQ(paces.at(27) - paces.at(26), 108 + 22);
}

TEST(RxRun, PacesFollowTheLinesToTheTestSet) {
  RxRig rig;
  rig.serial.delay = TimePoint{0};
  rig.panels.main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  EXPECT_FALSE(rig.Run());
  Lines trace = rig.journal.Lines();
  const auto& times = rig.journal.Times();
  for (std::size_t i = 0; i + 1 < trace.size(); ++i) {
    const auto paces = (times[i + 1] - times[i]) / std::chrono::milliseconds(1);
    if (paces > 0) trace[i] += " +" + std::to_string(paces);
  }
  const auto from = [&](const std::string& line) { return std::find(trace.begin(), trace.end(), line); };
  EXPECT_THAT(Lines(from("DownlinkParamSet +3"), from("Target: rfpw 2 0 +3")),
              ElementsAre("DownlinkParamSet +3", "1: CALL:OPERATING:MODE TEST", "1: CALL:FUNCTION:DOWNLINK CW",
                          "1: CALL:CELL:BAND EGSM +21", "1: SYST:CORR:SGA -0.5",
                          "1: CALL:CELL:RFG:POWER:AMPLITUDE -74dBm +58", "1: CALL:TCH:SEQ 0", "1: CALL:BCH:SEQ 0 +6",
                          "1: CALL:CELL:RFG:FREQ 935.067MHz +16"));
  EXPECT_THAT(Lines(from("Target: rfpw 2 0 +3"), from("1: CALL:TCH:SEQ 40")),
              ElementsAre("Target: rfpw 2 0 +3", "Target: rfpw 1 0 +3", "Target: rxpw 8 0", "Target: rfe 1 +11",
                          "Target: sr 1 2", "Target: rfe 1 +11", "Target: sr 1 2", "Target: rfe 1", "Target: sr 1 2",
                          "1: CALL:CELL:RFG:FREQ 934.933MHz +3", "Target: rfe 1", "Target: sr 1 2"));
  EXPECT_THAT(Lines(from("1: CALL:CELL:BAND DCS +108"), from("Target: rfpw 2 512 +3")),
              ElementsAre("1: CALL:CELL:BAND DCS +108", "1: SYST:CORR:SGA -0.5", "1: CALL:TCH:SEQ 512",
                          "1: CALL:BCH:SEQ 512 +6", "1: CALL:CELL:RFG:FREQ 1805.267MHz +16"));
  EXPECT_THAT(Lines(from("1: CALL:CELL:BAND EGSM +108"), from("1: CALL:TCH:SEQ 975")),
              ElementsAre("1: CALL:CELL:BAND EGSM +108", "1: SYST:CORR:SGA -0.5"));
}

TEST(RxRun, StoresGainsAndCompensations) {
  RxRig rig;
  rig.Script({54, 56, 58, 56, 57, 58, 59, 60, 58, 56, 55, 57});
  rig.state.rf.RFParams.BAND[0].agc_bands[10] = {7, 8};
  EXPECT_EQ(rig.Step().reason,
            "The compensation of channel 512 is 6 half dB. The compensation of channel 885 is 6 half dB.")
      << "5 half dB on either side are sound";
  const auto& bands = rig.state.rf.RFParams.BAND;
  EXPECT_EQ(bands[0].g_magic, 180);  // 56 - 40 + 74 = 90
  EXPECT_EQ(bands[1].g_magic, 186);  // 59 - 40 + 74 = 93
  EXPECT_EQ(rig.face.txtMPGMAGICGSM900F80.Text(), "90");
  EXPECT_EQ(rig.face.txtMPGMAGICGSM900F71.Text(), "180");
  EXPECT_EQ(rig.face.txtMPGMAGICDCS1800F80.Text(), "93");
  EXPECT_EQ(rig.face.txtMPGMAGICDCS1800F71.Text(), "186");
  // GSM levels: 540, 550 or 551 walked (540 + 21 * 0.5 = 550.5, to the even 550), 560, then by 20/84 = 0.2381:
  // 565, 570, 575, 580. Half dB from 560: 4, 2, 0, -1, -2, -3, -4.
  // DCS levels 560, 570, 580, 590, 600, 580, 560 from 590. EGSM 550, 560, 570 from the GSM reference.
  EXPECT_THAT(rig.face.lstMPRxChannelCalResult.Items(),
              ElementsAre("Band\tCal", "GSM Band", "0\t4", "21\t2", "40\t0", "62\t-1", "83\t-2", "103\t-3", "124\t-4",
                          "DCS Band", "512\t6", "574\t4", "636\t2", "700\t0", "760\t-2", "822\t2", "885\t6",
                          "EGSM Band", "975\t2", "999\t0", "1023\t-2"));
  const auto entries = [](const RFParameter::Band& band) {
    std::vector<std::pair<int, int>> pairs;
    for (const auto& entry : band.agc_bands) pairs.emplace_back(entry.upper_bound, entry.agc_calib);
    return pairs;
  };
  using P = std::pair<int, int>;
  EXPECT_THAT(entries(bands[0]), ElementsAre(P{0, 4}, P{21, 2}, P{40, 0}, P{62, -1}, P{83, -2}, P{103, -3},
                                             P{124, -4}, P{975, 2}, P{999, 0}, P{1023, -2}, P{7, 8}));
  EXPECT_THAT(entries(bands[1]), ElementsAre(P{512, 6}, P{574, 4}, P{636, 2}, P{700, 0}, P{760, -2}, P{822, 2},
                                             P{885, 6}, P{975, 2}, P{999, 0}, P{1023, -2}, P{0, 0}));
}

TEST(RxRun, TheSetPointIsRoundedBeforeItIsUsed) {
  RxRig rig;
  rig.autoCal.txtAutocalSetPointIL.SetText("-34.5");
  rig.Run();
  EXPECT_EQ(rig.Commands().at(1), "rxpw 1 40");
}

TEST(RxRun, OffsetChoicesReadOnceAndOnlyOneSpellingIsLow) {
  const struct {
    const char* offset;
    const char* frequency;
  } rows[] = {{"+offset", "CALL:CELL:RFG:FREQ 935.067MHz"},
              {"-offset", "CALL:CELL:RFG:FREQ 935.067MHz"},
              {"-Offset", "CALL:CELL:RFG:FREQ 934.933MHz"},
              {"average", "CALL:CELL:RFG:FREQ 935.067MHz"}};
  for (const auto& row : rows) {
    RxRig rig;
    rig.autoCal.comboOffset.SetText(row.offset);
    rig.Run();
    const Lines frequencies = rig.journal.Of("1: CALL:CELL:RFG:FREQ");
    EXPECT_EQ(frequencies.size(), 12U) << row.offset;
    EXPECT_THAT(rig.bus.At(1).lines, Contains(row.frequency)) << row.offset;
    EXPECT_EQ(std::ranges::count(rig.Commands(), "sr 1 2"), 12 + 6) << row.offset;
  }
}

TEST(RxRun, TheBroadcastFunctionSetsNoFrequency) {
  RxRig rig;
  rig.autoCal.ComboFunction.SetText("BCHTCH");
  rig.Run();
  EXPECT_THAT(rig.bus.At(1).lines, Contains("CALL:FUNCTION:DOWNLINK BCHTCH"));
  EXPECT_THAT(rig.bus.At(1).lines, Not(Contains(StartsWith("CALL:CELL:RFG:FREQ"))));
  EXPECT_EQ(std::ranges::count(rig.Commands(), "sr 1 2"), 12 + 6);
}

TEST(RxRun, TheGeneratorOffsetIsInKiloHertz) {
  RxRig rig;
  rig.autoCal.txtfreqOffset.SetText("5");
  rig.Run();
  EXPECT_THAT(rig.bus.At(1).lines, Contains("CALL:CELL:RFG:FREQ 943.005MHz"));
  EXPECT_THAT(rig.bus.At(1).lines, Contains("CALL:CELL:RFG:FREQ 942.995MHz"));
}

TEST(RxRun, AChannelOutsideTheBandsKeepsTheFrequencyBefore) {
  RxRig rig;
  rig.face.txtGSMArfcn1.SetText("300");
  rig.face.txtGSMArfcn3.SetText("500");
  const StepRecord step = rig.Step();
  const Lines frequencies = rig.journal.Of("1: CALL:CELL:RFG:FREQ ");
  EXPECT_THAT(Lines(frequencies.begin(), frequencies.begin() + 6),
              ElementsAre("0.067MHz", "-0.067MHz", "943.067MHz", "942.933MHz", "943.067MHz", "942.933MHz"));
  EXPECT_FALSE(step.complete);
  EXPECT_THAT(step.reason, ::testing::HasSubstr("Channel 300"));
}

TEST(RxRun, TheLossGoesByTheFirstChannelOfEachBand) {
  RxRig rig;
  rig.autoCal.txtRxCableLossGSM.SetText("-0.7");
  rig.autoCal.txtRxCableLossDCS.SetText("");
  rig.face.txtEGSMArfcn1.SetText("885");
  rig.face.txtDCSArfcn1.SetText("511");
  rig.Run();
  EXPECT_THAT(rig.journal.Of("1: SYST:CORR:SGA"), ElementsAre(" -0.7", " -0.7", " "));
}

TEST(RxRun, TwoReadingsMakeTheirMeanAndAHalfGoesToTheEvenLevel) {
  RxRig rig;
  rig.autoCal.ComboFunction.SetText("CW");
  // 56.5 above and 56 below each carrier: 565 and 560.
  for (int i = 0; i < 15; ++i) {
    rig.levels.push_back(56 * 64 + 32);
    rig.levels.push_back(56 * 64);
  }
  EXPECT_FALSE(rig.Run());
  EXPECT_EQ(rig.state.reply.PowerMeasureTimes10, "562.5");
  EXPECT_EQ(rig.face.txtMPGMAGICGSM900F80.Text(), "90");  // 56.2 + 34
}

TEST(RxRun, AReferenceWithoutABracketGivesNoGain) {
  for (const char* reference : {"0", "125"}) {
    RxRig rig;
    rig.face.txtGSMArfcn1.SetText("5");
    rig.face.txtGSMArfcn2.SetText(reference);
    const StepRecord step = rig.Step();
    EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
    EXPECT_EQ(rig.face.txtMPGMAGICGSM900F80.Text(), "");
    EXPECT_EQ(rig.state.rf.RFParams.BAND[0].g_magic, 0);
    EXPECT_EQ(rig.state.rf.RFParams.BAND[1].g_magic, 180);
    EXPECT_EQ(rig.state.rf.RFParams.BAND[0].agc_bands[2].upper_bound, 41);
    EXPECT_FALSE(step.complete);
    EXPECT_THAT(step.reason, ::testing::HasSubstr("GSM: no G-MAGIC"));
  }
}

TEST(RxRun, WithoutADcsGainItsCompensationsAreFromZero) {
  RxRig rig;
  rig.face.txtDCSArfcn4.SetText("512");
  rig.face.txtDCSArfcn1.SetText("513");
  rig.Run();
  EXPECT_EQ(rig.state.rf.RFParams.BAND[1].agc_bands[0].agc_calib, -112);  // 2 * (0 - 560) / 10
}

TEST(RxRun, TakesNothingOverFromTheRunBefore) {
  RxRig rig;
  ASSERT_FALSE(rig.Run());
  rig.face.txtGSMArfcn1.SetText("300");
  rig.face.txtDCSArfcn4.SetText("512");
  rig.face.txtDCSArfcn1.SetText("513");
  rig.journal.Clear();
  rig.Run();
  EXPECT_EQ(rig.journal.Of("1: CALL:CELL:RFG:FREQ ").front(), "0.067MHz") << "no carrier is in force yet";
  EXPECT_EQ(rig.state.rf.RFParams.BAND[1].agc_bands[0].agc_calib, -112) << "nor a DCS reference level";
}

TEST(RxRun, TheReferenceIsReadAgainAtTheGain) {
  RxRig rig;
  rig.serial.answer = [&](const SentCommand& command) {
    if (rig.journal.Commands().back() == "rfpw 2 1023") rig.face.txtGSMArfcn2.SetText("41");
    return rig.Answer(command);
  };
  EXPECT_FALSE(rig.Step().complete);
  EXPECT_EQ(rig.face.txtMPGMAGICGSM900F80.Text(), "");
  EXPECT_EQ(rig.state.rf.RFParams.BAND[0].agc_bands[2].upper_bound, 40);
}

TEST(RxRun, ItsRowsStandOnTheProductionPanelAndNoneInTheReceiveView) {
  RxRig rig;
  EXPECT_TRUE(rig.Step().complete);
  EXPECT_FALSE(rig.face.lstMPRxChannelCalResult.Items().empty());
  const FrmAutoCalRxResult& view = rig.panels.rxResult;
  for (const ListBox* list : {&view.lstRawRxResults, &view.lstConvertedRxResults, &view.lstRxChannelCompensation,
                              &view.lstRxCalChannelBands}) {
    EXPECT_TRUE(list->Items().empty()) << list->Name();
  }
}

TEST(RxRun, NoOtherRunCanBeStartedMeanwhile) {
  RxRig rig;
  rig.serial.answer = [&](const SentCommand& command) {
    EXPECT_FALSE(rig.face.cmdMPRxAllAutoCal.Enabled());
    EXPECT_FALSE(rig.autoCal.cmdGSM.Enabled());
    return rig.Answer(command);
  };
  rig.Run();
  EXPECT_TRUE(rig.face.cmdMPRxAllAutoCal.Enabled());
}

TEST(RxRun, TellsHowFarItHasComeInItsChannels) {
  RxRig rig;
  Lines told;
  RxTrail& trail = rig.state.rxTrail;
  trail.changed.Connect([&] {
    const auto channel = trail.Channel();
    told.push_back((channel ? std::to_string(*channel) : "none") + " " + std::to_string(trail.ChannelsRead()));
  });
  rig.level = 56 * 64;
  rig.Run();
  ASSERT_EQ(told.size(), 1 + 2 * std::size(kChannels));
  EXPECT_EQ(told[0], "none 0");
  for (std::size_t i = 0; i < std::size(kChannels); ++i) {
    EXPECT_EQ(told[1 + 2 * i], kChannels[i].arfcn + (" " + std::to_string(i)));
    EXPECT_EQ(told[2 + 2 * i], kChannels[i].arfcn + (" " + std::to_string(i + 1)));
  }
}

}  // namespace
}  // namespace orvane::test
