#pragma once

#include <map>
#include <set>

#include "base/decimal4.h"
#include "cal_desk.h"
#include "txcal/tx_calibration.h"

namespace orvane::test {

/// A transmitter on the fakes: what the Target was told is what the test set measures. The usual unit reaches each
/// level's target at the level's first DAC value; between those values its power rises evenly.
struct TxDesk : CalDesk {
  TxDesk();
  ~TxDesk() override;

  void ClickGsm() { outcome = op.Click(panel.cmdGSM); }
  void ClickDcs() { outcome = op.Click(panel.cmdDCS); }

  /// What left the station and how many paces followed: "Target: rfe 2 +11", "1: INIT:TXP".
  [[nodiscard]] std::vector<std::string> Trace() const;
  /// The part of the trace from the line that begins with `from` (its `nth` one) up to the next that begins with
  /// `to`, that one left out.
  [[nodiscard]] std::vector<std::string> Trace(const std::string& from, const std::string& to, int nth = 1) const;
  /// Commands that begin with `prefix`, without it.
  [[nodiscard]] std::vector<std::string> CommandsOf(const std::string& prefix) const {
    return journal.Of("Target: " + prefix);
  }
  /// Begins a whole run's notes at a step.
  void Note(RunStep step = RunStep::TransmitGsm) {
    state.report.Begin();
    state.report.Enter(step);
  }
  /// Why the step that was noted is not complete; empty when it is.
  [[nodiscard]] std::string Flaws();
  [[nodiscard]] RFParameter::Band& Record(std::size_t band) { return state.rf.RFParams.BAND[band]; }

  /// Power of the usual unit.
  [[nodiscard]] Decimal4 UsualPower(int levelWord, int dac) const;

  std::function<std::string()> reading = [this] { return UsualPower(levelWord, dac).Text(); };
  std::string phaseReading = "0,1.5,4.2,-12";
  /// Commands that the Target answers with status 5, and commands that it leaves without an answer.
  std::set<std::string> failing;
  std::set<std::string> silent;
  /// What happens while a command's reply is awaited.
  std::map<std::string, std::function<void()>> during;

  int levelWord = 0;
  int dac = 0;
  std::string lastCommand;
  std::optional<std::string> outcome;

  FrmAutoCalTxResult& results = panels.txResult;
  RunButtons buttons{panels.autoCal, panels.mpAutoCal, panels.baseBand};
  TxCalibration tx{{link, testSet, console, boxes, panels.autoCal, panels.txResult, state.cal, state.rf, state.ramp,
                    state.report, state.searchTrail},
                   buttons};

 private:
  void Follow(const std::string& command);
  [[nodiscard]] std::string Answer(const SentCommand& command);
};

}  // namespace orvane::test
