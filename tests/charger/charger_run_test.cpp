#include <algorithm>

#include "charger_rig.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr int kMpr = 69;

struct ChargerRunTest : ::testing::Test {
  ChargerRunTest() { rig.Prepare(); }
  std::optional<std::string> Run() {
    return rig.Act([this] { face.cmdChargerAutoCal.Click(); });
  }
  ChargerRig rig;
  FrmBaseBand& face = rig.panels.baseBand;
};

TEST_F(ChargerRunTest, AGoodBoardGoesFromTheRestVoltageToTheCompletionBox) {
  rig.raw = {640, 624, 496};
  EXPECT_FALSE(Run());
  EXPECT_THAT(
      rig.journal.Lines(),
      ElementsAre("2: VOLT 4.21", "Target: tms 3", "Target: mpr 30", "Target: mpr 30", "2: VOLT 3.36",
                  "Target: mpr 30", "Target: tms 1", "Target: stw 100 0x0270,0x0000,0x0000,0x0000,0x01F0",
                  "Target: str 100", "Target: tms 4", "2: VOLT 4.21", "box: Battery Calibration is completed."));
  EXPECT_EQ(rig.boxes.shown.back().title, "Alarm");
  EXPECT_EQ(face.txtCC2CVADC.Text(), "0x0270");
  EXPECT_EQ(face.txtShutDownADC.Text(), "0x01F0");
  EXPECT_EQ(rig.state.charger.CC2CVADCSaved, "0x0270");
  EXPECT_EQ(rig.state.charger.ShutDownADCSaved, "0x01F0");
  EXPECT_EQ(face.txtPSVoltage.Text(), "4.21");
  EXPECT_EQ(face.cmdChargerAutoCal.BackColor(), kButtonFace);
  EXPECT_EQ(face.shpBatCalOnOff.BackColor(), 255U);
  EXPECT_FALSE(rig.state.cal.CalFailed);
  EXPECT_FALSE(rig.state.charger.running);
}

TEST_F(ChargerRunTest, PacesStandBetweenTheCommands) {
  rig.raw = {640, 624, 496};
  rig.serial.delay = TimePoint{0};
  rig.panels.main.txtSyncDelay.SetText("500000");  // a pace of 1 ms
  const TimePoint start = rig.loop.Now();
  std::vector<long> paces;
  rig.serial.answer = [&](const SentCommand& command) {
    paces.push_back((rig.loop.Now() - start) / std::chrono::milliseconds(1));
    return rig.Answer(command);
  };
  Run();
  // "tms 3"; two reads at 4.2 V; 11 and 401 paces later the one at shut-down; "tms 1", "stw", "str", "tms 4".
  EXPECT_THAT(paces, ElementsAre(3, 14, 14, 426, 437, 437, 440, 443));
}

TEST_F(ChargerRunTest, TheButtonIsYellowAndTheLampGreenWhileTheBoardIsRead) {
  rig.raw = {640, 624, 496};
  std::vector<Colour> seen;
  rig.serial.answer = [&](const SentCommand& command) {
    if (command.operation == kMpr) {
      seen.push_back(face.cmdChargerAutoCal.BackColor());
      EXPECT_EQ(face.shpBatCalOnOff.BackColor(), 65280U);
      EXPECT_TRUE(rig.state.charger.running);
    }
    return rig.Answer(command);
  };
  Run();
  EXPECT_THAT(seen, ElementsAre(0x80FFFFU, 0x80FFFFU, 0x80FFFFU));
}

TEST_F(ChargerRunTest, NoOtherRunCanBeStartedMeanwhile) {
  rig.raw = {640, 624, 496};
  rig.serial.answer = [&](const SentCommand& command) {
    EXPECT_FALSE(face.cmdChargerAutoCal.Enabled());
    EXPECT_FALSE(rig.panels.autoCal.cmdAllCalStart.Enabled());
    return rig.Answer(command);
  };
  Run();
  EXPECT_TRUE(face.cmdChargerAutoCal.Enabled());
}

TEST_F(ChargerRunTest, TheFirstCountAtFullVoltageIsThrownAwayEvenInTheWindow) {
  rig.raw = {625, 640};
  Run();
  EXPECT_TRUE(rig.state.cal.CalFailed);
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Battery Calibration ERROR."));
}

TEST_F(ChargerRunTest, WhatEarlierReadsLeftBehindIsForgotten) {
  rig.state.reply.RawAdcOutOfWindow = 1;
  rig.state.reply.RawAdcSkip = 1;
  rig.raw = {640, 624, 496};
  Run();
  EXPECT_THAT(rig.boxes.Texts(), ElementsAre("Battery Calibration is completed."));
  EXPECT_EQ(face.txtCC2CVADC.Text(), "0x0270");
}

TEST_F(ChargerRunTest, TheFirstReadByHandBehindARunIsThrownAwayAgain) {
  rig.raw = {640, 624, 496, 640};
  Run();
  face.cmdCC2CVADC.Click();
  EXPECT_EQ(rig.state.reply.RawAdcOutOfWindow, 0);
  EXPECT_EQ(face.txtCC2CVADC.Text(), "");
}

TEST_F(ChargerRunTest, WindowsIncludeTheirLimits) {
  const struct {
    std::uint16_t full;
    std::uint16_t shutDown;
    std::vector<std::string> words;
  } rows[] = {{631, 496, {}},
              {619, 496, {}},
              {632, 496, {"Battery Calibration ERROR."}},
              {618, 496, {"Battery Calibration ERROR."}},
              {624, 489, {}},
              {624, 503, {}},
              {624, 488, {"Battery Calibraion ERROR."}},
              {624, 504, {"Battery Calibraion ERROR."}}};
  for (const auto& row : rows) {
    ChargerRig fresh;
    fresh.Prepare();
    fresh.state.charger.BatCalShowDone = false;
    fresh.raw = {625, row.full, row.shutDown};
    fresh.face.cmdChargerAutoCal.Click();
    EXPECT_EQ(fresh.boxes.Texts(), row.words) << row.full << " " << row.shutDown;
  }
}

TEST_F(ChargerRunTest, ACountOutOfItsWindowFailsTheUnitAndLeavesItInItsTestMode) {
  rig.state.charger.BatCalShowDone = false;
  rig.raw = {624, 624, 600};
  rig.boxes.whileOpen = [&](const Box&) {
    EXPECT_TRUE(rig.state.cal.CalFailed);
    EXPECT_EQ(face.cmdChargerAutoCal.BackColor(), kButtonFace);
    EXPECT_EQ(rig.bus.At(2).lines.back(), "VOLT 4.21");
    EXPECT_FALSE(rig.state.charger.BatCalShowDone);
  };
  Run();
  EXPECT_THAT(rig.journal.Lines(),
              ElementsAre("2: VOLT 4.21", "Target: tms 3", "Target: mpr 30", "Target: mpr 30", "2: VOLT 3.36",
                          "Target: mpr 30", "2: VOLT 4.21", "box: Battery Calibraion ERROR."));
  EXPECT_EQ(rig.boxes.shown.back().title, "Warning");
  EXPECT_EQ(rig.boxes.shown.back().icon, BoxIcon::Stop);
  EXPECT_FALSE(rig.state.cal.CalStopRequested);
  EXPECT_TRUE(rig.state.charger.BatCalShowDone);
  EXPECT_EQ(face.txtShutDownADC.Text(), "");
  EXPECT_EQ(rig.state.charger.CC2CVADCSaved, "");
}

TEST_F(ChargerRunTest, AReadOutOfItsWindowCostsTheWholeReplyWait) {
  rig.raw = {624, 640};
  const TimePoint start = rig.loop.Now();
  Run();
  EXPECT_GT(rig.loop.Now() - start, std::chrono::milliseconds(2500));
}

TEST_F(ChargerRunTest, LossAndShutDownVoltageMakeTheSupplysVoltages) {
  const struct {
    const char* loss;
    const char* shutDown;
    std::vector<std::string> volts;
  } rows[] = {{"0.01", "3.35", {"VOLT 4.21", "VOLT 3.36", "VOLT 4.21"}},
              {"0", "3.1", {"VOLT 4.2", "VOLT 3.1", "VOLT 4.2"}},
              {"0.00014", "3.25", {"VOLT 4.2001", "VOLT 3.2501", "VOLT 4.2001"}},
              // The voltage box refuses a sign, and what stands there then goes out.
              {"-5", "3.35", {"VOLT 4.21", "VOLT 4.21", "VOLT 4.21"}}};
  for (const auto& row : rows) {
    ChargerRig fresh;
    fresh.Prepare();
    fresh.raw = {624, 624, 496};
    fresh.face.txtVoltageLoss.SetText(row.loss);
    fresh.face.cboShutDownVoltage.SetText(row.shutDown);
    fresh.face.cmdChargerAutoCal.Click();
    EXPECT_EQ(fresh.journal.Of("2: "), row.volts) << row.loss;
  }
}

TEST_F(ChargerRunTest, AClosedPortEndsTheRunAtOnce) {
  rig.serial.Close();
  face.txtCC2CVADC.SetText("0x0270");
  Run();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("box: Target must be initialized at first."));
  EXPECT_EQ(face.txtCC2CVADC.Text(), "0x0270");
  EXPECT_FALSE(rig.state.cal.CalFailed);
}

TEST_F(ChargerRunTest, ASupplyThatIsNotInitializedEndsTheRun) {
  rig.state.charger.PSReady = false;
  face.txtCC2CVADC.SetText("0x0270");
  Run();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("box: Initialize Power Supply."));
  EXPECT_EQ(face.txtCC2CVADC.Text(), "");
  EXPECT_FALSE(rig.state.cal.CalFailed);
}

TEST_F(ChargerRunTest, AnotherModeEmptiesTheBoxesAndSetsZeroVolts) {
  rig.state.reply.TargetMode = "NormalMode";
  const std::vector<TextBox*> boxes{&face.txtCC2CVADC, &face.txtShutDownADC, &face.txtChargerDisplay};
  for (TextBox* box : boxes) box->SetText("old");
  Run();
  EXPECT_THAT(rig.journal.Lines(), ElementsAre("2: VOLT 0", "box: Battery Calibration is completed."));
  for (TextBox* box : boxes) EXPECT_EQ(box->Text(), "") << box->Name();
  EXPECT_EQ(face.txtPSVoltage.Text(), "0");
}

TEST_F(ChargerRunTest, ASequencedRunShowsNoCompletionBoxAndRestoresTheNextOne) {
  rig.state.charger.BatCalShowDone = false;
  rig.raw = {624, 624, 496};
  Run();
  EXPECT_THAT(rig.boxes.Texts(), IsEmpty());
  EXPECT_TRUE(rig.state.charger.BatCalShowDone);
}

TEST(BaseBandPanel, LoadingItAsksForTheCompletionBox) {
  ChargerRig fresh;
  EXPECT_FALSE(fresh.face.Created());
  EXPECT_FALSE(fresh.state.charger.BatCalShowDone);
  fresh.face.Touch();
  EXPECT_TRUE(fresh.state.charger.BatCalShowDone);
}

TEST_F(ChargerRunTest, ALossThatIsNoNumberStopsTheRunBeforeTheSupplyMoves) {
  face.txtVoltageLoss.SetText("");
  EXPECT_TRUE(Run());
  EXPECT_THAT(rig.journal.Of("2: "), IsEmpty());
  EXPECT_TRUE(face.cmdChargerAutoCal.Enabled());
}

TEST_F(ChargerRunTest, ADelayThatIsNoNumberStopsTheRun) {
  rig.raw = {624, 624, 496};
  face.cboDelay.SetText("long");
  EXPECT_TRUE(Run());
  EXPECT_EQ(rig.journal.Of("2: ").back(), "VOLT 3.36");
}

TEST_F(ChargerRunTest, ASilentTargetStopsTheRunAfterTwentyRounds) {
  rig.silent = true;
  EXPECT_EQ(Run(), "The Target does not answer.");
  const auto commands = rig.Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "mpr 30"), 20);
  EXPECT_FALSE(rig.state.cal.CalFailed);
  EXPECT_TRUE(rig.state.reply.ReplyDone);
}

TEST_F(ChargerRunTest, ASilentTargetStopsTheShutDownLoopToo) {
  rig.raw = {624, 624};
  int reads = 0;
  rig.serial.answer = [&](const SentCommand& command) {
    return command.operation == kMpr && ++reads > 2 ? std::string() : rig.Answer(command);
  };
  EXPECT_EQ(Run(), "The Target does not answer.");
  EXPECT_EQ(reads, 22);
}

TEST_F(ChargerRunTest, ARefusingTargetStopsTheRunToo) {
  rig.failing = kMpr;
  EXPECT_EQ(Run(), "The Target refuses to read its raw ADC.");
  EXPECT_TRUE(rig.state.cal.CalFailed);
}

TEST_F(ChargerRunTest, APortThatClosesBehindRefusalsIsATargetThatDoesNotAnswer) {
  rig.failing = kMpr;
  int reads = 0;
  rig.serial.answer = [&](const SentCommand& command) {
    if (command.operation == kMpr && ++reads == 20)
      rig.loop.PostAt(rig.loop.Now() + std::chrono::seconds(1), [&] { rig.serial.Close(); });
    return rig.Answer(command);
  };
  EXPECT_EQ(Run(), "The Target does not answer.");
  EXPECT_EQ(reads, 20);
}

TEST_F(ChargerRunTest, SilenceBehindRefusalsIsATargetThatDoesNotAnswer) {
  rig.failing = kMpr;
  int reads = 0;
  rig.serial.answer = [&](const SentCommand& command) {
    return command.operation == kMpr && ++reads == 20 ? std::string() : rig.Answer(command);
  };
  EXPECT_EQ(Run(), "The Target does not answer.");
}

TEST_F(ChargerRunTest, AReadingStartsTheCountOfSilentRoundsAnew) {
  rig.raw = {624, 624, 496};
  int reads = 0;
  rig.serial.answer = [&](const SentCommand& command) {
    return command.operation == kMpr && ++reads % 20 != 0 ? std::string() : rig.Answer(command);
  };
  EXPECT_FALSE(Run());
  EXPECT_EQ(reads, 60);
}

TEST_F(ChargerRunTest, APortThatClosesMeanwhileStopsTheRun) {
  rig.serial.answer = [&](const SentCommand& command) {
    if (command.operation == kMpr) rig.serial.Close();
    return rig.Answer(command);
  };
  EXPECT_EQ(Run(), "The Target does not answer.");
  const auto texts = rig.boxes.Texts();
  EXPECT_EQ(std::count(texts.begin(), texts.end(), "Target must be initialized at first."), 19);
}

TEST_F(ChargerRunTest, ASupplyThatFailsInTheRunShowsItsBoxAndTheRunGoesOn) {
  rig.raw = {624, 624, 496};
  rig.bus.At(2).absent = true;
  const StepRecord step = rig.StepOf([&] { face.cmdChargerAutoCal.Click(); });
  EXPECT_EQ(rig.boxes.shown.size(), 4U);  // three voltages, and the end
  EXPECT_TRUE(rig.state.charger.powerError);
  EXPECT_FALSE(step.complete);
  EXPECT_THAT(step.reason, HasSubstr("VOLT 3.36"));
}

TEST_F(ChargerRunTest, TheReportKnowsWhatACalibratedUnitMustNotHave) {
  rig.raw = {624, 624, 496};
  EXPECT_TRUE(rig.StepOf([&] { face.cmdChargerAutoCal.Click(); }).complete);
  const auto turnABit = [](ChargerRig& r) {
    r.serial.answer = [&r](const SentCommand& command) {
      const std::string reply = r.Answer(command);
      if (command.operation == 82) r.flash.at(1) ^= 1;
      return reply;
    };
  };
  const struct {
    std::function<void(ChargerRig&)> spoil;
    const char* reason;
  } rows[] = {{[](ChargerRig& r) { r.serial.Close(); }, "Target must be initialized at first."},
              {[](ChargerRig& r) { r.state.charger.PSReady = false; }, "Initialize Power Supply."},
              {[](ChargerRig& r) { r.state.charger.powerError = true; }, "has failed since it was initialized"},
              {[](ChargerRig& r) { r.state.reply.TargetMode = "NormalMode"; }, "not in test mode"},
              {[](ChargerRig& r) {
                 r.raw = {624, 632};
               },
               "632"},
              {[](ChargerRig& r) { r.failing = 82; }, "stw 100"},
              {[](ChargerRig& r) { r.failing = 83; }, "str 100"},
              {turnABit, "reads back other counts"}};
  for (const auto& row : rows) {
    ChargerRig fresh;
    fresh.Prepare();
    fresh.raw = {624, 624, 496};
    row.spoil(fresh);
    const StepRecord step = fresh.StepOf([&] { fresh.face.cmdChargerAutoCal.Click(); });
    EXPECT_FALSE(step.complete) << row.reason;
    EXPECT_THAT(step.reason, HasSubstr(row.reason));
  }
}

}  // namespace
}  // namespace orvane::test
