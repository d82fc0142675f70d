#pragma once

#include "cal_desk.h"
#include "txcal/cal_panel_inputs.h"
#include "txcal/side_table_groups.h"

namespace orvane::test {

/// The calibration panel with its inputs and side tables at work, not yet touched.
struct PanelDesk : CalDesk {
  PanelDesk() {
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

  OrvaneMain& main = panels.main;
  CalPanelInputs inputs{panels.autoCal, boxes};
  SideTableGroups groups{panels.autoCal, panels.main, state.cal, files, boxes, dialogs};
};

/// The panel as its load leaves it.
struct LoadedPanelDesk : PanelDesk {
  LoadedPanelDesk() { panel.Touch(); }
};

}  // namespace orvane::test
