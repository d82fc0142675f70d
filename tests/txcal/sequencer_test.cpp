#include "txcal/sequencer.h"

#include "rfparams/transfer.h"
#include "txcal/result_save.h"
#include "txcal/tx_desk.h"

namespace orvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

/// The sequencer between stand-ins for the runs of the other folders: each leaves its name in the journal.
struct SequencerDesk : test::TxDesk {
  SequencerDesk() {
    sequencer.Connect();
    save.Connect();
    StandIn(panels.mpAutoCal.cmdMPRxAllAutoCal, "receive", onReceive);
    StandIn(panels.baseBand.cmdChargerAutoCal, "charger", onCharger);
    StandIn(panels.main.cmdTargetReset, "reset", onReset);
    panels.baseBand.onLoad = [this] { state.charger.BatCalShowDone = true; };
    for (Panel* shown : {static_cast<Panel*>(&panels.mpAutoCal), static_cast<Panel*>(&panels.txResult),
                         static_cast<Panel*>(&panels.baseBand), static_cast<Panel*>(&panels.fail),
                         static_cast<Panel*>(&panels.pass)}) {
      shown->changed.Connect([this, shown, was = false]() mutable {
        if (shown->Visible() != was) journal.Add((shown->Visible() ? "show " : "hide ") + shown->Name());
        was = shown->Visible();
      });
    }
    state.report.concluded.Connect([this](Verdict verdict) { verdicts.emplace_back(VerdictText(verdict)); });
  }

  /// The bands' own lines are of no interest here.
  void StandInForBands() {
    StandIn(panel.cmdDCS, "dcs", onDcs);
    StandIn(panel.cmdGSM, "gsm", onGsm);
  }
  void StandInForSave() { StandIn(panel.cmdAutoCalResultSave, "save", onSave); }
  void StandIn(Button& button, std::string name, std::function<void()>& act) {
    button.onClick = [this, name, &act] {
      journal.Add(name);
      if (act) act();
    };
  }

  void Click(Button& button) { outcome = op.Click(button); }
  void Fail() { cal.CalFailed = cal.CalStopRequested = true; }
  [[nodiscard]] std::vector<std::string> StepLines() const {
    std::vector<std::string> lines;
    for (const StepRecord& step : state.report.Steps()) {
      lines.push_back(std::string(StepName(step.step)) + (step.complete ? "" : ": " + step.reason));
    }
    return lines;
  }

  std::function<void()> onReceive, onCharger, onReset, onDcs, onGsm, onSave;
  std::vector<std::string> verdicts;
  ParameterTransfer transfer{panels.downLoad, panels.autoCal, state.rf, state.cal, state.reply, link,
                             state.report,    boxes,          dialogs,  files};
  ResultSave save{panels.autoCal, panels.downLoad, state.cal, state.rf, link,
                  transfer,       state.report,    boxes,     dialogs,  files};
  RunHands hands{{panels.main, panels.autoCal, panels.mpAutoCal, panels.baseBand, state.cal, state.rf, state.ramp,
                  state.testSet},
                 state.report,
                 [this] { return state.tally.commands; }};
  Sequencer sequencer{
      {panels.autoCal, panels.main, panels.mpAutoCal, panels.txResult, panels.baseBand, panels.fail, panels.pass},
      link,
      calPanel,
      state.cal,
      state.charger,
      state.tally,
      state.report,
      hands,
      buttons,
      boxes};
};

using TxAutoCal = SequencerDesk;
using RfCal = SequencerDesk;
using AllCal = SequencerDesk;

TEST_F(TxAutoCal, RunsDcsThenGsm) {
  StandInForBands();
  for (ListBox* list : {&results.listPeakPower, &results.listPowerLevel, &results.listChanCalPeakPower,
                        &results.listChanCalPowerLevel}) {
    list->AddItem("earlier");
  }
  onDcs = [this] { EXPECT_EQ(cal.CalMode, "TxALL"); };
  Click(panel.cmdTxAllCal);
  EXPECT_THAT(Trace(), ElementsAre("Target: rfpw 8 1", "Target: spw 3 0", "dcs +1", "gsm +1"));
  EXPECT_THAT(results.listPeakPower.Items(), IsEmpty());
  EXPECT_THAT(results.listPowerLevel.Items(), IsEmpty());
  EXPECT_THAT(results.listChanCalPeakPower.Items(), IsEmpty());
  EXPECT_THAT(results.listChanCalPowerLevel.Items(), IsEmpty());
  EXPECT_EQ(cal.CalMode, "TxALL");
  EXPECT_THAT(state.report.Steps(), IsEmpty()) << "no whole run, no notes";
}

TEST_F(TxAutoCal, SavesNothing) {
  StandInForBands();
  StandInForSave();
  Click(panel.cmdTxAllCal);
  EXPECT_THAT(journal.Lines(), Not(Contains("save")));
}

TEST_F(TxAutoCal, ForgetsAStopFromBeforeAndLeavesGsmOutAfterANewOne) {
  StandInForBands();
  cal.CalStopRequested = true;
  panel.cmdAutoCalStop.SetBackColor(kRed);
  onDcs = [this] {
    EXPECT_FALSE(cal.CalStopRequested);
    EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kButtonFace);
    cal.CalStopRequested = true;
  };
  Click(panel.cmdTxAllCal);
  EXPECT_EQ(Trace().back(), "dcs +1");
}

TEST_F(TxAutoCal, GoesOnWhateverItsOwnTwoCommandsBring) {
  StandInForBands();
  silent = {"rfpw 8 1", "spw 3 0"};
  Click(panel.cmdTxAllCal);
  EXPECT_THAT(journal.Lines(), Contains("gsm"));
}

TEST_F(TxAutoCal, GsmLeavesTheRampDownloadToDcs) {
  Click(panel.cmdTxAllCal);
  EXPECT_THAT(CommandsOf("ttw "), SizeIs(31));
  EXPECT_TRUE(cal.GsmCalDone);
  EXPECT_TRUE(cal.DcsCalDone);
}

TEST_F(RfCal, RunsReceiveTransmitAndSave) {
  StandInForBands();
  StandInForSave();
  onReceive = [this] { EXPECT_EQ(cal.CalMode, "ALL"); };
  Click(panel.Command1);
  EXPECT_THAT(Trace(),
              ElementsAre("show frmMPAutoCal +1", "receive +1", "show frmAutoCalTxResult", "Target: rfpw 8 1",
                          "Target: spw 3 0", "dcs +1", "gsm +2", "save", "box: RF Auto Calibration is completed."));
  EXPECT_EQ(boxes.shown[0].title, "Alarm");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::Information);
  EXPECT_EQ(cal.CalMode, "END");
  EXPECT_THAT(verdicts, IsEmpty());
  EXPECT_THAT(state.report.Steps(), IsEmpty());
}

TEST_F(RfCal, EndsAfterAReceiveRunThatFailed) {
  StandInForBands();
  onReceive = [this] { Fail(); };
  Click(panel.Command1);
  EXPECT_EQ(Trace().back(), "receive +1");
  EXPECT_EQ(cal.CalMode, "ALL");
  EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(RfCal, SavesAndCompletesEvenAfterATransmitRunThatFailed) {
  StandInForBands();
  StandInForSave();
  onDcs = [this] { Fail(); };
  Click(panel.Command1);
  EXPECT_THAT(journal.Lines(), Contains("save"));
  EXPECT_THAT(boxes.Texts(), ElementsAre("RF Auto Calibration is completed."));
}

TEST_F(RfCal, SavesNothingWithAutoUnchecked) {
  StandInForBands();
  StandInForSave();
  panel.chkAutoSaveMode.SetChecked(false);
  panel.optSaveModeFile.Select();
  Click(panel.Command1);
  EXPECT_THAT(journal.Lines(), Not(Contains("save")));
  EXPECT_THAT(dialogs.shown, IsEmpty());
}

TEST_F(AllCal, RunsEverythingInItsOrder) {
  StandInForBands();
  StandInForSave();
  onSave = [this] { EXPECT_EQ(cal.CalMode, "TxALL"); };
  onCharger = [this] {
    EXPECT_EQ(cal.CalMode, "END");
    EXPECT_FALSE(state.charger.BatCalShowDone);
    EXPECT_FALSE(panels.pass.Visible());
  };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(Trace(), ElementsAre("show frmMPAutoCal +1", "receive +1", "show frmAutoCalTxResult",
                                   "Target: rfpw 8 1", "Target: spw 3 0", "dcs +1", "gsm +2", "save", "Target: tms 0",
                                   "show frmBaseBand +101", "charger +101", "show frmFailPass +11",
                                   "hide frmMPAutoCal +3", "hide frmAutoCalTxResult +11", "reset +11"));
  EXPECT_TRUE(state.charger.BatCalShowDone);
  EXPECT_THAT(verdicts, ElementsAre("PASS"));
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS", "transmitGSM", "save", "charger"));
  EXPECT_TRUE(state.report.AllComplete());
  EXPECT_FALSE(panels.pass.lblIncomplete.Visible());
  EXPECT_EQ(panels.pass.Image1.Picture(), "pass");
  EXPECT_FALSE(panels.pass.lstIncomplete.Visible());
}

TEST_F(AllCal, BeginsWithFreshFlags) {
  StandInForBands();
  StandInForSave();
  Fail();
  panel.cmdAutoCalStop.SetBackColor(kRed);
  onReceive = [this] {
    EXPECT_FALSE(cal.CalFailed);
    EXPECT_FALSE(cal.CalStopRequested);
    EXPECT_EQ(panel.cmdAutoCalStop.BackColor(), kButtonFace);
    EXPECT_EQ(cal.CalMode, "ALL");
  };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(verdicts, ElementsAre("PASS"));
}

TEST_F(AllCal, AFailedReceiveRunShowsFailResetsTheTargetAndEnds) {
  StandInForBands();
  onReceive = [this] { Fail(); };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(Trace(), ElementsAre("show frmMPAutoCal +1", "receive +1", "show frmFail", "reset"));
  EXPECT_THAT(verdicts, ElementsAre("FAIL"));
  EXPECT_TRUE(panels.mpAutoCal.Visible()) << "the panels stay open";
  EXPECT_EQ(cal.CalMode, "ALL");
}

TEST_F(AllCal, AFailedTransmitRunShowsFailResetsTheTargetAndEnds) {
  StandInForBands();
  StandInForSave();
  onGsm = [this] { Fail(); };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(Trace("gsm", "nothing"), ElementsAre("gsm +2", "show frmFail", "reset"));
  EXPECT_THAT(verdicts, ElementsAre("FAIL"));
}

TEST_F(AllCal, AFailedChargerRunShowsFailInPlaceOfPass) {
  StandInForBands();
  StandInForSave();
  onCharger = [this] { cal.CalFailed = true; };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(Trace("charger", "nothing"), ElementsAre("charger +101", "show frmFail +11", "hide frmMPAutoCal +3",
                                                       "hide frmAutoCalTxResult +11", "reset +11"));
  EXPECT_THAT(verdicts, ElementsAre("FAIL"));
  EXPECT_FALSE(panels.pass.Visible());
}

TEST_F(AllCal, AFailureThatNobodyStopsGoesOnToTheEnd) {
  StandInForBands();
  StandInForSave();
  onReceive = [this] { cal.CalFailed = true; };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(journal.Of("reset"), SizeIs(3)) << "after receive, after transmit, at the end";
  EXPECT_THAT(verdicts, ElementsAre("FAIL", "FAIL", "FAIL"));
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS", "transmitGSM", "save", "charger"))
      << "the notes go on behind the first verdict";
}

TEST_F(AllCal, ARunAroundAnotherOneIsNotCompleteByTheOthersSteps) {
  StandInForBands();
  StandInForSave();
  std::vector<bool> complete;
  state.report.concluded.Connect([&](Verdict) { complete.push_back(state.report.AllComplete()); });
  onGsm = [this] {
    onGsm = nullptr;
    panel.cmdAllCalStart.Click();
  };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(verdicts, ElementsAre("PASS", "PASS"));
  EXPECT_THAT(complete, ElementsAre(true, false));
  EXPECT_TRUE(panels.pass.lblIncomplete.Visible());
  EXPECT_EQ(panels.pass.Image1.Picture(), "not measured");

  Click(panel.cmdAllCalStart);
  EXPECT_THAT(complete, ElementsAre(true, false, true)) << "the next unit's run has its own notes";
}

TEST_F(AllCal, ABandStoppedByHandEndsWithoutAVerdictPanel) {
  StandInForSave();
  during["txpw 1 110"] = [this] { op.Click(panel.cmdAutoCalStop); };
  Click(panel.cmdAllCalStart);
  EXPECT_FALSE(panels.fail.Visible());
  EXPECT_FALSE(panels.pass.Visible());
  EXPECT_THAT(journal.Lines(), Not(Contains("reset")));
  EXPECT_THAT(verdicts, ElementsAre("NONE"));
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS: Stopped at DCS level 10."));
  EXPECT_EQ(cal.CalMode, "Stop");
}

TEST_F(AllCal, AFailureThatStopsEverythingEndsWithoutAVerdictToo) {
  StandInForSave();
  bus.At(1).silent = true;
  Click(panel.cmdAllCalStart);
  EXPECT_TRUE(outcome.has_value());
  EXPECT_THAT(verdicts, ElementsAre("NONE"));
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS: The step did not end."));
  EXPECT_TRUE(panel.cmdAllCalStart.Enabled());

  // A band started by hand afterwards adds nothing to that run.
  bus.At(1).silent = false;
  state.testSet.TestSetReady = false;
  ClickGsm();
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS: The step did not end."));
}

TEST_F(AllCal, ARunWithTheBandsThemselvesIsComplete) {
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS", "transmitGSM", "save", "charger"));
  EXPECT_THAT(verdicts, ElementsAre("PASS"));
}

TEST_F(AllCal, AStopInTheSaveEndsTheRunAsStopped) {
  StandInForBands();
  during["spw 1 0"] = [this] { op.Click(panel.cmdAutoCalStop); };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(outcome, std::nullopt);
  EXPECT_THAT(verdicts, ElementsAre("NONE"));
  EXPECT_THAT(StepLines(), ElementsAre("receive", "transmitDCS", "transmitGSM",
                                       "save: Stopped while the EEPROM was written: nothing was committed."));
  EXPECT_THAT(journal.Lines(), Not(Contains("charger")));
  EXPECT_THAT(journal.Lines(), Not(Contains("reset")));
  EXPECT_THAT(Commands(), Not(Contains("se 1")));
  EXPECT_FALSE(panels.pass.Visible());
  EXPECT_FALSE(panels.fail.Visible());

  during.clear();
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(verdicts, ElementsAre("NONE", "PASS")) << "the next unit is none the worse";
  EXPECT_TRUE(state.report.AllComplete());
}

TEST_F(AllCal, AStopInTheSaveOfAFailedUnitShowsTheFailure) {
  StandInForBands();
  failing = {"spw 5 0"};
  during["spw 1 0"] = [this] {
    op.Click(panel.cmdAutoCalStop);
    op.Click(panel.cmdAutoCalStop);
  };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(verdicts, ElementsAre("FAIL"));
  EXPECT_THAT(journal.Lines(), Not(Contains("charger")));
}

TEST_F(RfCal, AStopInTheSaveEndsItWithoutTheCompletionBox) {
  StandInForBands();
  during["spw 1 0"] = [this] { op.Click(panel.cmdAutoCalStop); };
  Click(panel.Command1);
  EXPECT_THAT(boxes.shown, IsEmpty());
  EXPECT_THAT(Commands(), Not(Contains("se 1")));
  EXPECT_EQ(cal.CalMode, "Stop");
}

TEST_F(AllCal, AValueOutOfToleranceIsAnotherPassThanSomethingThatWasNotMeasured) {
  StandInForBands();
  StandInForSave();
  const auto& pass = panels.pass;
  onReceive = [this] { state.report.Flaw("The compensation is 7 half dB.", FlawKind::OutOfTolerance); };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(pass.Image1.Picture(), "out of tolerance");
  EXPECT_EQ(pass.lblDoubt.Caption(), "OUT OF TOLERANCE");
  EXPECT_EQ(pass.lblRemedy.Caption(),
            "Take the unit through once more. If it ends so again, the unit goes to repair.");
  EXPECT_THAT(pass.lstIncomplete.Items(), ElementsAre("receive: The compensation is 7 half dB."));
  for (const Control* control : std::initializer_list<const Control*>{&pass.lblDoubt, &pass.lblIncomplete,
                                                                      &pass.lstIncomplete, &pass.lblRemedy}) {
    EXPECT_TRUE(control->Visible()) << control->Name();
  }

  // Both in one step, and in two.
  onReceive = [this] {
    state.report.Flaw("Not measured.");
    state.report.Flaw("Too high.", FlawKind::OutOfTolerance);
  };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(pass.lblDoubt.Caption(), "NOT MEASURED");
  onReceive = [this] { state.report.Flaw("Too high.", FlawKind::OutOfTolerance); };
  onCharger = [this] { state.report.Flaw("Initialize Power Supply."); };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(pass.Image1.Picture(), "not measured");
  EXPECT_EQ(pass.lblDoubt.Caption(), "NOT MEASURED");
  EXPECT_EQ(pass.lblRemedy.Caption(),
            "The unit is not calibrated. Mend what stands above, then take it through once more.");

  onReceive = onCharger = nullptr;
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(pass.Image1.Picture(), "pass");
  EXPECT_FALSE(pass.lblDoubt.Visible());
  EXPECT_FALSE(pass.lblRemedy.Visible());
  EXPECT_THAT(verdicts, ElementsAre("PASS", "PASS", "PASS", "PASS"));
}

TEST_F(AllCal, PanelsOfARunDoNotTakeTheKeyboard) {
  StandInForBands();
  StandInForSave();
  for (const bool failed : {false, true}) {
    onCharger = [this, failed] { cal.CalFailed = failed; };
    Click(panel.cmdAllCalStart);
  }
  for (const Panel* shown : std::initializer_list<const Panel*>{&panels.mpAutoCal, &panels.txResult, &panels.baseBand,
                                                                &panels.fail, &panels.pass}) {
    EXPECT_FALSE(shown->TakesKeyboard()) << shown->Name();
  }
  panels.mpAutoCal.Show();
  EXPECT_TRUE(panels.mpAutoCal.TakesKeyboard()) << "somebody who opens it wants to type there";
}

TEST_F(AllCal, ATargetThatDoesNotAnswerTheSaveEndsTheRun) {
  serial.answer = [](const test::SentCommand&) { return std::string(); };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(outcome, "The Target does not answer.");
  EXPECT_THAT(verdicts, ElementsAre("NONE"));
  EXPECT_FALSE(panels.pass.Visible());
}

TEST_F(AllCal, ATargetThatTakesThePiecesAloneLeadsToAPassThatShowsItsGaps) {
  serial.answer = [](const test::SentCommand& command) {
    return command.operation == 82 ? test::PaddedReply(command.operation, 0) : std::string();
  };
  panels.pass.lstIncomplete.AddItem("an earlier unit's");
  Click(panel.cmdAllCalStart);
  EXPECT_TRUE(panels.pass.Visible());
  EXPECT_FALSE(cal.CalFailed);
  EXPECT_FALSE(state.report.AllComplete());
  EXPECT_TRUE(panels.pass.lblIncomplete.Visible());
  EXPECT_EQ(panels.pass.Image1.Picture(), "not measured");
  EXPECT_TRUE(panels.pass.lstIncomplete.Visible());
  EXPECT_THAT(panels.pass.lstIncomplete.Items(),
              ElementsAre("transmitDCS: \"txpw 8 0\" brought no reply. Exchanges with the Target: 3 without a reply.",
                          "transmitGSM: \"txpw 8 0\" brought no reply. Exchanges with the Target: 1 without a reply.",
                          "save: \"spw 5 0\" brought no reply: what was written may have gone elsewhere. "
                          "\"spw 1 0\" brought no reply: all that was written may stand in the wrong place. "
                          "\"se 1\" brought no reply: whether the EEPROM keeps what was written is not known. "
                          "Exchanges with the Target: 3 without a reply.",
                          "charger: Exchanges with the Target: 1 without a reply."));
}

TEST_F(AllCal, AStatusThatNobodyLooksAtIsAFlawOfItsStep) {
  StandInForBands();
  StandInForSave();
  failing = {"tms 0"};
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(StepLines().back(), "charger: Commands that failed in the Target: 1.");
  EXPECT_THAT(verdicts, ElementsAre("FAIL"));
}

TEST_F(AllCal, TheNextPassTakesTheGapsAway) {
  StandInForBands();
  StandInForSave();
  silent = {"tms 0"};
  Click(panel.cmdAllCalStart);
  EXPECT_TRUE(panels.pass.lstIncomplete.Visible());
  silent.clear();
  Click(panel.cmdAllCalStart);
  EXPECT_FALSE(panels.pass.lblIncomplete.Visible());
  EXPECT_EQ(panels.pass.Image1.Picture(), "pass");
  EXPECT_FALSE(panels.pass.lstIncomplete.Visible());
  EXPECT_THAT(panels.pass.lstIncomplete.Items(), IsEmpty());
}

TEST_F(AllCal, AsksForTheFileBeforeAnyMeasuring) {
  StandInForBands();
  for (OptionButton* mode : {&panel.optSaveModeFile, &panel.optSaveModeEEPROMFile}) {
    mode->Select();
    dialogs.answers = {"/results/unit.epm"};
    onReceive = [this] { EXPECT_EQ(cal.CalSaveFileName, "/results/unit.epm"); };
    Click(panel.cmdAllCalStart);
    ASSERT_THAT(dialogs.shown, SizeIs(1)) << mode->Name();
    EXPECT_TRUE(files.content.contains("/results/unit.epm"));
    EXPECT_TRUE(state.report.AllComplete());
    dialogs.shown.clear();
    files.content.clear();
    cal.CalSaveFileName.clear();
  }
}

TEST_F(AllCal, DoesNotAskForAFileThatNobodyWillWrite) {
  StandInForBands();
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(dialogs.shown, IsEmpty()) << "Flash";
  panel.optSaveModeFile.Select();
  panel.chkAutoSaveMode.SetChecked(false);
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(dialogs.shown, IsEmpty()) << "Auto unchecked";
  EXPECT_EQ(StepLines()[3], "save: Nothing was saved: \"Auto\" is not checked.");
  EXPECT_THAT(verdicts, ElementsAre("PASS", "PASS"));
}

TEST_F(AllCal, ACancelledFileQuestionWritesToTheOldNameAndIsAFlaw) {
  StandInForBands();
  panel.optSaveModeFile.Select();
  cal.CalSaveFileName = "/results/before.epm";
  cal.CalSaveFileOk = true;
  dialogs.answers = {std::nullopt};
  Click(panel.cmdAllCalStart);
  EXPECT_FALSE(cal.CalSaveFileOk);
  EXPECT_THAT(files.content["/results/before.epm"], HasSubstr("rf_revision\t=\t"));
  EXPECT_EQ(StepLines()[3], "save: No file was chosen for this run.");
}

TEST_F(AllCal, AFileThatIsWantedLaterGoesToTheLastNameAndIsAFlaw) {
  StandInForBands();
  cal.CalSaveFileName = "/results/before.epm";
  cal.CalSaveFileOk = true;
  onReceive = [this] { op.Select(panel.optSaveModeFile); };
  Click(panel.cmdAllCalStart);
  EXPECT_THAT(dialogs.shown, IsEmpty());
  EXPECT_THAT(files.content["/results/before.epm"], HasSubstr("rf_revision\t=\t"));
  EXPECT_EQ(StepLines()[3], "save: This run did not ask for a file: the last name was used.");
}

TEST_F(AllCal, AClosedPortCostsABoxAtTheResetAndNoMore) {
  StandInForBands();
  StandInForSave();
  onReset = [this] { boxes.Warning("Port is already closed."); };
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(Trace().back(), "box: Port is already closed. +11");
}

TEST_F(AllCal, TheRunsRefuseAnOperatorWhileOneIsUnderWay) {
  StandInForSave();
  Button* const starters[] = {&panel.cmdGSM,
                              &panel.cmdDCS,
                              &panel.cmdTxAllCal,
                              &panel.cmdAllCalStart,
                              &panel.Command1,
                              &panels.mpAutoCal.cmdMPRxAllAutoCal,
                              &panels.baseBand.cmdChargerAutoCal};
  int looked = 0;
  const auto look = [&] {
    ++looked;
    for (Button* button : starters) {
      EXPECT_FALSE(button->Enabled()) << button->Name();
      EXPECT_THROW(op.Click(*button), ControlDisabled);
    }
    EXPECT_TRUE(panel.cmdAutoCalStop.Enabled());
  };
  during["txpw 1 110"] = look;
  during["txpw 1 10"] = look;
  during["tms 0"] = look;
  Click(panel.cmdAllCalStart);
  EXPECT_EQ(looked, 3);
  for (Button* button : starters) EXPECT_TRUE(button->Enabled()) << button->Name();

  during.clear();
  during["txpw 1 110"] = look;
  bus.At(1).silent = true;
  ClickDcs();
  EXPECT_TRUE(outcome.has_value());
  for (Button* button : starters) EXPECT_TRUE(button->Enabled()) << button->Name() << " after a failure";
}

}  // namespace
}  // namespace orvane
