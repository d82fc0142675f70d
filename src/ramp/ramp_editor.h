#pragma once

#include <string_view>

#include "link/target_link.h"
#include "panels/ramp_editor_face.h"
#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "results/results_console.h"
#include "state/ramp_state.h"
#include "state/reply_state.h"
#include "state/rf_state.h"

namespace orvane {

/// In what the editors of the two panels differ.
struct RampEditorRow {
  /// Sum that turns a status box green while editing.
  int greenSum;
  std::string_view badValue;
  std::string_view overwriteQuestion;
  std::string_view allSaved;
  /// Words behind the table's number, twice.
  std::string_view notSaved;
  std::string_view saveAgain;
  std::string_view tooManyFailures;
  /// Load in "Target" mode sets and clears `PlainReplyMode`, which no reply ever sees.
  bool flagsPlainReplies;
};

inline constexpr RampEditorRow kRampEditorOfMain{
    128,
    "Wrong Ramp value exists. Check again!",
    "Do you want to change with ",
    "31 Ramp Tables are saved completely.",
    "th Ramp Table is not save normally.",
    "th Ramp Table must be saved again",
    "There are lots of Error with saving, So save again.",
    false,
};

inline constexpr RampEditorRow kRampEditorOfDialog{
    256,
    "There is a wrong Ramp value. Check again!",
    "Do you want to change a current file to  ",
    "31 Ramp Table are saved completely.",
    "th Ramp Table is not saved.",
    "th Ramp table should be tried to save again",
    "Ramp Table is not saved completely. Try again",
    true,
};

/// What the editor works with, the same for both panels.
struct RampEditorPorts {
  RampState& ramp;
  RFState& rf;
  ReplyState& reply;
  TargetLink& link;
  ResultsConsole& console;
  Files& files;
  Boxes& boxes;
  FileDialogs& dialogs;
};

/// The ramp editor of one panel: shows, checks and stores tables, and moves them to and from files and the Target.
class RampEditor {
 public:
  RampEditor(RampEditorFace& face, const RampEditorRow& row, const RampEditorPorts& ports);
  void Connect();

  /// As the panel opens: table 0 in the boxes, which nobody judges yet, and its sums.
  /// @throws StationFailure when the table holds a text that is no number.
  void Open();

 private:
  void OnValueChanged(const ControlArray<TextBox>& boxes, TextBox& status);
  void OnIndexChanged();
  void StoreBoxes();
  void SendBoxes();

  void Load();
  [[nodiscard]] bool LoadFile();
  void Save();
  void SaveToFile();
  void SaveToTarget();

  [[nodiscard]] bool AllBoxesValid() const;

  RampEditorFace& face_;
  const RampEditorRow& row_;
  RampEditorPorts ports_;
  bool opening_ = false;
};

}  // namespace orvane
