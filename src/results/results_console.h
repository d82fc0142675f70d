#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/files.h"
#include "state/console_state.h"

namespace orvane {

/// The scrolling console of the main panel, and the log that takes a copy of what it shows.
class ResultsConsole {
 public:
  ResultsConsole(PanelRef<OrvaneMain> main, ConsoleState& state, Files& files, Boxes& boxes);

  /// Appends to a console box and to the open log. Above 16000 characters the oldest 4096 go first; each line end
  /// becomes one CR LF.
  void AppendConsole(TextBox& box, std::string_view text);
  /// The same on `txtResults`.
  void Append(std::string_view text);
  /// The same with backspaces (8) taking back the character in front of them.
  void ShowData(TextBox& box, std::string_view text);

  /// Opens the log; what is appended from now on goes to the end of that file. What cannot be written stays in hand
  /// until the operator has answered: Retry writes it, Cancel ends the log. @throws StationFailure with the system's
  /// text.
  void OpenLog(const std::string& path);
  /// Closes the log; the title becomes "ORVANE_up".
  void LogOff();

 private:
  void Insert(TextBox& box, std::string_view text);
  void WriteToLog(std::string_view text);

  PanelRef<OrvaneMain> main_;
  ConsoleState& state_;
  Files& files_;
  Boxes& boxes_;
  std::unique_ptr<GrowingFile> log_;
  /// What the console shows and the log has not yet.
  std::string unlogged_;
};

}  // namespace orvane
