#pragma once

#include <gmock/gmock.h>

#include "support/rig.h"
#include "txcal/cal_panel.h"

namespace orvane::test {

/// The calibration panel's own operations on a station's ground floor, not yet touched.
struct CalDesk : ::testing::Test, Rig {
  CalDesk() { calPanel.Connect(); }

  FrmAutoCal& panel = panels.autoCal;
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
};

}  // namespace orvane::test
