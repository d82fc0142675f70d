#pragma once

#include <deque>

#include "charger/base_band_panel.h"
#include "charger/bench_instruments.h"
#include "charger/charger_manual.h"
#include "charger/charger_parameters.h"
#include "charger/charger_run.h"
#include "support/rig.h"

namespace orvane::test {

/// frmBaseBand with all its operations, and a Target that answers raw ADC reads from a script and keeps its flash.
struct ChargerRig : Rig {
  explicit ChargerRig(ListBox* lines = nullptr)
      : manual(link, state.reply, panels.baseBand, panels.main, console, boxes, lines),
        parameters(link, panels.baseBand, state.cal, console, boxes, state.report, lines) {
    base.Connect();
    supply.Connect();
    load.Connect();
    manual.Connect();
    parameters.Connect();
    run.Connect();
    serial.answer = [this](const SentCommand& command) { return Answer(command); };
  }

  /// A charger run's surroundings: port open, supply initialized, journal empty.
  void Prepare() {
    OpenPort();
    face.supply.initialize.Click();
    panels.main.txtResults.SetText("");
    journal.Clear();
  }

  std::string Answer(const SentCommand& command) {
    constexpr std::uint8_t kMpr = 69;
    constexpr std::uint8_t kStw = 82;
    constexpr std::uint8_t kStr = 83;
    if (silent) return "";
    const std::uint8_t status = failing == command.operation ? 1 : 0;
    if (command.operation == kMpr) {
      std::uint16_t value = 0;
      if (!raw.empty()) {
        value = raw.front();
        raw.pop_front();
      }
      return PaddedReply(kMpr, status, ItemAndValue(command.data.at(0), value));
    }
    if (command.operation == kStw) flash = command.data;
    if (command.operation == kStr) return PaddedReply(kStr, status, flash);
    return PaddedReply(command.operation, status, command.data);
  }

  /// How a whole run would record what the act did.
  StepRecord StepOf(const std::function<void()>& act) {
    state.report.Begin();
    state.report.Enter(RunStep::Charger);
    Act(act);
    state.report.Leave();
    return state.report.Steps().back();
  }

  FrmBaseBand& face = panels.baseBand;
  RunButtons runButtons{panels.autoCal, panels.mpAutoCal, panels.baseBand};
  BaseBandPanel base{panels.baseBand, state.charger, boxes};
  BenchSupply supply{CWGPIBPower, panels.baseBand, panels.main, state.charger, console, boxes};
  BenchLoad load{CWGPIBLoader, panels.baseBand, panels.main, state.charger, console, boxes};
  ChargerManual manual;
  ChargerParameterPanel parameters;
  ChargerRun run{link,      state.reply, CWGPIBPower,  panels.baseBand, state.charger,
                 state.cal, boxes,       state.report, runButtons};

  /// Values of the next raw ADC reads.
  std::deque<std::uint16_t> raw;
  std::vector<std::uint8_t> flash;
  bool silent = false;
  /// Operation that gets a failure status.
  int failing = -1;
};

}  // namespace orvane::test
