#pragma once

#include <string>

#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/gpib.h"
#include "platform/panel.h"
#include "results/results_console.h"
#include "state/reply_state.h"
#include "state/test_set_state.h"

namespace orvane {

/// The group "Instrument (GPIB)" of the main panel: opens and ends the one session to the test set. The operator's
/// selection decides the dialect; what the instrument says of itself is only shown.
class TestSetSession {
 public:
  TestSetSession(PanelRef<OrvaneMain> main, CWGPIB& cwgpib1, TestSetState& state, ReplyState& reply,
                 ResultsConsole& console, Boxes& boxes)
      : main_(main), control_(cwgpib1), state_(state), reply_(reply), console_(console), boxes_(boxes) {}

  void Connect();

  /// Makes what the panel has selected the session's settings, and configures the control for them. A time-out code
  /// of -1 leaves the control's time-out as it was. @throws StationFailure for an address that is no number.
  void Configure(int timeOutCode);

  /// Lets the instrument go back to local; a later Configure starts afresh.
  void Release() { control_.Release(); }

 private:
  void Initialize();
  void Reset();
  void OnCompletion(Integer status, const std::string& data);

  PanelRef<OrvaneMain> main_;
  CWGPIB& control_;
  TestSetState& state_;
  ReplyState& reply_;
  ResultsConsole& console_;
  Boxes& boxes_;
};

}  // namespace orvane
