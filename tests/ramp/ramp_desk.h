#pragma once

#include <gmock/gmock.h>

#include "ramp/ramp_editor.h"
#include "ramp/ramp_panels.h"
#include "ramp_tables.h"
#include "support/rig.h"

namespace orvane::test {

/// The two ramp editors at work on one table, whose value j of table t is (t + j) modulo 32.
struct RampDesk : ::testing::Test, Rig {
  RampDesk() {
    state.ramp = CountingTables();
    mainEditor.Connect();
    dialogEditor.Connect();
    dialog.Connect();
    delays.Connect();
  }

  /// Opens both panels on table 0. The storage mode is "File" then.
  void OpenPanels() {
    panels.main.Show();
    mainEditor.Open();
    panels.rampTable.Show();
  }

  /// Texts of the boxes shown since the last call, each with its title and the letter of its icon.
  std::vector<std::string> Shown() {
    std::vector<std::string> texts;
    for (const Box& box : boxes.shown) {
      const char* icon = box.icon == BoxIcon::Stop          ? "stop"
                         : box.icon == BoxIcon::Information ? "information"
                                                            : "other";
      texts.push_back(box.title + ", " + icon + ": " + box.text);
    }
    boxes.shown.clear();
    return texts;
  }

  RampEditorFace& mainFace = panels.main.ramp;
  RampEditorFace& dialogFace = panels.rampTable.editor;
  RampEditorPorts ports{state.ramp, state.rf, state.reply, link, console, files, boxes, dialogs};
  RampEditor mainEditor{mainFace, kRampEditorOfMain, ports};
  RampEditor dialogEditor{dialogFace, kRampEditorOfDialog, ports};
  RampTableDialog dialog{panels.rampTable, dialogEditor, state.ramp};
  RampDelayBoxes delays{panels.main, boxes};
};

inline void FillRow(const ControlArray<TextBox>& row, const std::string& text) {
  for (const auto& box : row) box->SetText(text);
}

}  // namespace orvane::test
