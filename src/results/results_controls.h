#pragma once

#include <optional>
#include <string>

#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "results/results_console.h"
#include "state/console_state.h"
#include "state/reply_state.h"

namespace orvane {

/// The buttons at the results console: the log on and off, and an empty console.
class ResultsControls {
 public:
  ResultsControls(PanelRef<OrvaneMain> main, ResultsConsole& console, ConsoleState& state, const ReplyState& reply,
                  Files& files, FileDialogs& dialogs, Boxes& boxes);

  void Connect();

  /// Closes an open log; otherwise asks for a file and opens a fresh log there.
  void OnLogOn();
  void OnResultClear();

 private:
  /// A path at which no file stands, or an empty one in place of the old. No value: the operator cancelled, or the
  /// old file would not go.
  [[nodiscard]] std::optional<std::string> AskForPath();

  PanelRef<OrvaneMain> main_;
  ResultsConsole& console_;
  ConsoleState& state_;
  const ReplyState& reply_;
  Files& files_;
  FileDialogs& dialogs_;
  Boxes& boxes_;
};

}  // namespace orvane
