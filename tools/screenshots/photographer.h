#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>

#include "app/program.h"
#include "app/station_status.h"
#include "app/surroundings.h"
#include "app/windows/front_end.h"
#include "app/windows/status_strip.h"

namespace orvane {

/// Works one station on one virtual bench as an operator does, and keeps what the screen shows.
class Photographer {
 public:
  Photographer(const bench::BenchOptions& bench, std::filesystem::path folder);

  [[nodiscard]] StationPanels& Panels() { return program_.TheStation().Panels(); }
  [[nodiscard]] StationState& State() { return program_.TheStation().State(); }
  [[nodiscard]] Desk& TheDesk() { return program_.TheWorld().desk; }

  void Click(Button& button) { hand_.Click(button); }
  void Type(TextBox& box, const std::string& text) { hand_.Type(box, text); }
  void InitializeInstruments();
  void RunTarget() { Click(Panels().main.cmdTargetInitialize); }
  /// Once the power search has made a pass for that level, from within the run.
  void WhenLevelIsSearched(const std::string& level, std::function<void()> act);
  /// Once `control` has changed so that `condition` holds, from within what has changed it.
  void When(Control& control, std::function<bool()> condition, std::function<void()> act);

  /// The window of a panel as it stands, or shown for the picture.
  void Take(Panel& panel, const std::string& name);
  void TakeTabs(OrvaneMain& main);
  /// What drops down from a box of a panel's window.
  void TakeList(ComboBox& box, const std::string& name);
  /// The status line of a station on real devices, which no picture may touch.
  void TakeStatusOf(const Surroundings& surroundings, const std::string& name);

  /// From now on each box is kept under that name and a number, and each file dialog under its title.
  void NameBoxes(std::string name) { boxName_ = std::move(name); }
  void NameDialogs(std::string name) { dialogName_ = std::move(name); }

 private:
  void Answer(const Desk::OpenBox& open);
  void Answer(const Desk::OpenDialog& open);
  [[nodiscard]] PanelWindow& WindowOf(Panel& panel);
  void Save(QWidget& window, const std::string& name);

  Program program_;
  StationStatus status_;
  FrontEnd frontEnd_;
  /// Below the main window.
  StatusStrip* strip_ = nullptr;
  std::filesystem::path folder_;
  Operator hand_;
  std::string boxName_;
  std::string dialogName_;
  std::set<std::string> seen_;
};

}  // namespace orvane
