#include "txcal/sequencer.h"

#include <algorithm>
#include <string>

namespace orvane {
namespace {

/// Puts the steps that are not complete under the verdict, or takes an earlier unit's away.
void ShowIncompleteSteps(FrmFailPass& pass, const RunReport& report) {
  pass.lstIncomplete.Clear();
  for (const RunStep step : kRunSteps) {
    const auto& steps = report.Steps();
    const auto record =
        std::find_if(steps.begin(), steps.end(), [&](const StepRecord& entry) { return entry.step == step; });
    if (record != steps.end() && record->complete) continue;
    pass.lstIncomplete.AddItem(std::string(StepName(step)) + ": " +
                               (record != steps.end() ? record->reason : std::string("The step did not run.")));
  }
  const std::optional<FlawKind> doubt = report.Doubt();
  pass.Image1.SetPicture(!doubt ? "pass" : *doubt == FlawKind::OutOfTolerance ? "out of tolerance" : "not measured");
  if (doubt) {
    pass.lblDoubt.SetCaption(std::string(FlawText(*doubt)));
    pass.lblRemedy.SetCaption(std::string(RemedyText(*doubt)));
  }
  pass.lblDoubt.SetVisible(doubt.has_value());
  pass.lblIncomplete.SetVisible(doubt.has_value());
  pass.lstIncomplete.SetVisible(doubt.has_value());
  pass.lblRemedy.SetVisible(doubt.has_value());
}

}  // namespace

Sequencer::Sequencer(const SequencerPanels& panels, TargetLink& link, CalPanel& calPanel, CalState& cal,
                     ChargerState& charger, const LinkTally& tally, RunReport& report, RunHands& hands,
                     RunButtons& buttons, Boxes& boxes)
    : panels_(panels),
      link_(link),
      calPanel_(calPanel),
      cal_(cal),
      charger_(charger),
      tally_(tally),
      report_(report),
      hands_(hands),
      buttons_(buttons),
      boxes_(boxes) {}

void Sequencer::Connect() {
  FrmAutoCal& panel = panels_.autoCal.Untouched();
  panel.cmdTxAllCal.onClick = [this] { TxAllCal(); };
  panel.Command1.onClick = [this] { RfCal(); };
  panel.cmdAllCalStart.onClick = [this] { AllCal(); };
}

void Sequencer::TxAllCal() {
  const RunGuard running(buttons_, report_, RunKind::Transmit);
  cal_.CalMode = "TxALL";
  if (cal_.CalStopRequested) ForgetStop();
  // DCS goes first: it sends the ramp tables, and the GSM run behind it need not.
  Step(RunStep::TransmitDcs, [this] {
    link_.RunTargetCommand("rfpw 8 1");
    for (ListBox* list : {&panels_.txResult->listPeakPower, &panels_.txResult->listPowerLevel,
                          &panels_.txResult->listChanCalPeakPower, &panels_.txResult->listChanCalPowerLevel}) {
      list->Clear();
    }
    link_.RunTargetCommand("spw 3 0");
    panels_.autoCal->cmdDCS.Click();
    link_.PaceDelay();
  });
  if (cal_.CalStopRequested) return;
  Step(RunStep::TransmitGsm, [this] {
    panels_.autoCal->cmdGSM.Click();
    link_.PaceDelay();
  });
}

// The completion box comes whether or not the transmit steps succeeded, and the result is saved in any case.
void Sequencer::RfCal() {
  const RunGuard running(buttons_, report_, RunKind::Rf);
  cal_.CalMode = "ALL";
  AskForFileAndReceive();
  if (cal_.CalStopRequested) return;
  Transmit();
  if (panels_.autoCal->chkAutoSaveMode.Checked()) {
    panels_.autoCal->cmdAutoCalResultSave.Click();
    if (cal_.saveStopped) return;
  }
  cal_.CalMode = "END";
  boxes_.Alarm("RF Auto Calibration is completed.");
}

void Sequencer::AllCal() {
  const RunGuard running(buttons_, report_, RunKind::Whole);
  report_.Begin();
  try {
    WholeRun();
  } catch (...) {
    report_.End();
    throw;
  }
  report_.End();
}

void Sequencer::WholeRun() {
  cal_.CalFailed = false;
  ForgetStop();
  cal_.CalMode = "ALL";
  AskForFileAndReceive();
  if (FailedOrStopped()) return;
  Transmit();
  if (FailedOrStopped()) return;
  Step(RunStep::Save, [this] { SaveIfAuto(); });
  if (cal_.saveStopped) {
    (void)FailedOrStopped();
    return;
  }
  cal_.CalMode = "END";
  Step(RunStep::Charger, [this] { Charge(); });
  charger_.BatCalShowDone = true;
  ShowVerdict();
  ClearAway();
}

void Sequencer::AskForFileAndReceive() {
  askedForFile_ = panels_.autoCal->chkAutoSaveMode.Checked() && SavesToFile();
  if (askedForFile_) calPanel_.DownloadSaveFileName();
  panels_.mpAutoCal->ShowBeside();
  link_.PaceDelay();
  Step(RunStep::Receive, [this] { panels_.mpAutoCal->cmdMPRxAllAutoCal.Click(); });
  link_.PaceDelay();
}

void Sequencer::Transmit() {
  panels_.txResult->ShowBeside();
  panels_.autoCal->cmdTxAllCal.Click();
  link_.PaceDelay();
}

void Sequencer::SaveIfAuto() {
  cal_.saveStopped = false;
  if (!panels_.autoCal->chkAutoSaveMode.Checked()) {
    report_.Flaw("Nothing was saved: \"Auto\" is not checked.");
    return;
  }
  if (SavesToFile() && !askedForFile_) report_.Flaw("This run did not ask for a file: the last name was used.");
  panels_.autoCal->cmdAutoCalResultSave.Click();
}

void Sequencer::Charge() {
  link_.RunTargetCommand("tms 0");
  // The panel's load sets the flag, so the panel has to be there before the flag is cleared.
  FrmBaseBand& baseBand = *panels_.baseBand;
  charger_.BatCalShowDone = false;
  baseBand.ShowBeside();
  link_.PaceDelay(101);
  baseBand.cmdChargerAutoCal.Click();
  link_.PaceDelay(101);
}

void Sequencer::ShowVerdict() {
  if (cal_.CalFailed) {
    panels_.fail->ShowBeside();
    report_.Conclude(Verdict::Fail);
    return;
  }
  ShowIncompleteSteps(*panels_.pass, report_);
  panels_.pass->ShowBeside();
  report_.Conclude(Verdict::Pass);
}

void Sequencer::ClearAway() {
  link_.PaceDelay(11);
  panels_.mpAutoCal->Hide();
  link_.PaceDelay(3);
  panels_.txResult->Hide();
  link_.PaceDelay(11);
  panels_.main->cmdTargetReset.Click();
  link_.PaceDelay(11);
}

bool Sequencer::FailedOrStopped() {
  if (cal_.CalFailed) {
    ShowVerdict();
    panels_.main->cmdTargetReset.Click();
  }
  return cal_.CalStopRequested;
}

void Sequencer::Step(RunStep step, const std::function<void()>& work) {
  report_.Enter(step);
  const LinkTally before = tally_;
  work();
  if (const std::string doubts = DoubtsBetween(before, tally_); !doubts.empty()) report_.Flaw(doubts + ".");
  if (const long failed = tally_.failureStatuses - before.failureStatuses; failed > 0) {
    report_.Flaw("Commands that failed in the Target: " + std::to_string(failed) + ".");
  }
  hands_.TellChanges(step);
  report_.Leave();
}

void Sequencer::ForgetStop() {
  cal_.CalStopRequested = false;
  panels_.autoCal->cmdAutoCalStop.SetBackColor(kButtonFace);
}

}  // namespace orvane
