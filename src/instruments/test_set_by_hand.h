#pragma once

#include "instruments/test_set.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/panel.h"
#include "results/results_console.h"

namespace orvane {

/// What the tabs "RX" and "TX" of the main panel set on the test set: level, loss and band. Each button writes one
/// line and shows it; a test set without a dialect gets, and shows, an empty one.
class TestSetByHand {
 public:
  TestSetByHand(PanelRef<OrvaneMain> main, TestSet& testSet, ResultsConsole& console, Boxes& boxes)
      : main_(main), testSet_(testSet), console_(console), boxes_(boxes) {}

  void Connect();

 private:
  void SetBaseStationLevel();
  void SetLoss();
  void SetRfMode(const ComboBox& mode);
  void WriteShown(const std::string& line);

  PanelRef<OrvaneMain> main_;
  TestSet& testSet_;
  ResultsConsole& console_;
  Boxes& boxes_;
};

}  // namespace orvane
