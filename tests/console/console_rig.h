#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "console/main_panel.h"
#include "console/start_up.h"
#include "console/target_connection.h"
#include "support/rig.h"

namespace orvane::test {

/// The main panel with its own operations in front of the fakes. What it presses on other panels is noted in the
/// journal.
struct ConsoleRig : Rig {
  ConsoleRig() {
    session.Connect();
    connection.Connect();
    mainPanel.Connect();
    Note(autoCal.cmdAllCalStart);
    for (Button* button : {&baseBand.supply.initialize, &baseBand.supply.reset, &baseBand.cmdPSVoltageSet}) {
      Note(*button);
    }
  }

  void Note(Button& button) {
    button.onClick = [this, &button] { journal.Add("click: " + button.Owner().Name() + "." + button.Name()); };
  }
  [[nodiscard]] std::vector<std::string> Clicks() const { return journal.Of("click: "); }
  /// Loads the main panel as the station's start does.
  void Start() {
    startUp.Connect();
    Act([this] { main.Show(); });
  }
  FakeInstrument& Instrument() { return bus.At(1); }

  OrvaneMain& main = panels.main;
  FrmAutoCal& autoCal = panels.autoCal;
  FrmBaseBand& baseBand = panels.baseBand;
  FrmDownLoad& downLoad = panels.downLoad;

  TestSetSession session{main, CWGPIB1, state.testSet, state.reply, console, boxes};
  InstalledData data{main, autoCal, downLoad, state.rf, state.ramp, state.cal, files, boxes};
  StartUp startUp{main, state.console, state.reply, state.testSet, data, session, testSet, link};
  TargetConnection connection{main, baseBand, autoCal, state.console, serial, link, testSet, console, boxes};
  MainPanel mainPanel{main, autoCal, baseBand, downLoad, boxes};
};

inline void ExpectBox(const Box& box, const std::string& text, const std::string& title, BoxIcon icon) {
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.title, title);
  EXPECT_EQ(box.icon, icon);
  EXPECT_EQ(box.buttons, std::vector<BoxButton>{BoxButton::Ok});
}

}  // namespace orvane::test
