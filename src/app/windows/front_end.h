#pragma once

#include <map>
#include <memory>

#include "adapters/qt/hands.h"
#include "adapters/qt/panel_window.h"
#include "app/program.h"
#include "app/station_layouts.h"
#include "app/windows/desk_windows.h"

namespace orvane {

/// The station on the screen: a window for each panel, made when the panel is first shown, and the desk's boxes. It
/// is made before the station starts and goes when it has ended.
class FrontEnd {
 public:
  explicit FrontEnd(Program& program);
  FrontEnd(const FrontEnd&) = delete;
  FrontEnd& operator=(const FrontEnd&) = delete;

 private:
  void Follow(PanelLayout& panel);
  [[nodiscard]] ViewMaker ViewsOf(const Panel& panel);

  Program& program_;
  Hands hands_;
  DeskWindows desk_;
  std::vector<PanelLayout> layouts_;
  std::map<const Panel*, std::unique_ptr<PanelWindow>> windows_;
};

}  // namespace orvane
