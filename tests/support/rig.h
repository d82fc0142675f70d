#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "instruments/test_set.h"
#include "link/reply_decoder.h"
#include "link/target_link.h"
#include "panels/station_panels.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "results/results_console.h"
#include "state/station_state.h"
#include "support/fake_desk.h"
#include "support/fake_gpib.h"
#include "support/fake_serial.h"
#include "support/journal.h"
#include "support/memory_files.h"

namespace orvane::test {

/// A station's ground floor on fakes, for the tests of one subsystem: state, panels, link and test set work, a Target
/// answers every command with success, instruments stand at 1 (test set), 2 (supply) and 5 (load). The subsystem's
/// own operations are constructed and connected by its tests.
struct Rig {
  Rig();
  ~Rig();

  /// Opens the Target's port and enters test mode, without a command.
  void OpenPort();
  /// Opens a session to the test set and marks it ready, without a line.
  void OpenTestSet(const std::string& kind = "HP8960");
  /// Runs something as an operator's act would; the text of the failure that stopped it, or no value.
  std::optional<std::string> Act(const std::function<void()>& act) { return nest.Run(act); }
  /// Command lines since the journal was last cleared.
  [[nodiscard]] std::vector<std::string> Commands() const { return journal.Commands(); }

  VirtualEventLoop loop;
  Journal journal;
  FakeSerial serial{loop};
  FakeGpibBus bus{loop, journal};
  FakeBoxes boxes{journal};
  FakeDialogs dialogs;
  MemoryFiles files;

  StationState state;
  StationPanels panels;
  OperationNest nest{boxes};
  Operator op{nest};

  CWGPIB CWGPIB1{"test set", bus, state.niGlobal, CWGPIB::OnError::Fails};
  CWGPIB CWGPIBPower{"supply", bus, state.niGlobal, CWGPIB::OnError::RaisesEvent};
  CWGPIB CWGPIBLoader{"load", bus, state.niGlobal, CWGPIB::OnError::RaisesEvent};
  ResultsConsole console{panels.main, state.console, files, boxes};
  ReplyDecoder decoder{loop, state.reply, state.tally, state.cal, state.ramp, panels.main, panels.baseBand, console};
  TargetLink link{loop, serial, panels.main, console, decoder, state.reply, state.tally, boxes};
  TestSet testSet{CWGPIB1, state.testSet, console};
};

}  // namespace orvane::test
