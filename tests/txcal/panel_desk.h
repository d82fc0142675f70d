#pragma once

#include <gmock/gmock.h>

#include "support/rig.h"
#include "txcal/cal_panel.h"
#include "txcal/cal_panel_inputs.h"
#include "txcal/side_table_groups.h"

namespace orvane::test {

/// The calibration panel at work on a station's ground floor, not yet touched.
struct PanelDesk : ::testing::Test, Rig {
  PanelDesk() {
    calPanel.Connect();
    inputs.Connect();
    groups.Connect();
  }

  /// Texts of the boxes shown since the last call. All of them must be stop boxes titled "Warning".
  std::vector<std::string> Warnings() {
    std::vector<std::string> texts;
    for (const Box& box : boxes.shown) {
      EXPECT_EQ(box.title, "Warning") << box.text;
      EXPECT_EQ(box.icon, BoxIcon::Stop) << box.text;
      texts.push_back(box.text);
    }
    boxes.shown.clear();
    return texts;
  }

  FrmAutoCal& panel = panels.autoCal;
  OrvaneMain& main = panels.main;
  CalState& cal = state.cal;
  CalPanel calPanel{{panels.autoCal, panels.main, panels.downLoad, panels.txResult, panels.rxResult, panels.mpAutoCal,
                     panels.rampTable},
                    state.cal,
                    state.rf,
                    link,
                    testSet,
                    files,
                    boxes,
                    dialogs};
  CalPanelInputs inputs{panels.autoCal, boxes};
  SideTableGroups groups{panels.autoCal, panels.main, state.cal, files, boxes, dialogs};
};

/// The panel as its load leaves it.
struct LoadedPanelDesk : PanelDesk {
  LoadedPanelDesk() { panel.Touch(); }
};

}  // namespace orvane::test
