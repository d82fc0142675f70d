#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>

#include "adapters/qt/hands.h"
#include "adapters/qt/panel_window.h"
#include "app/station.h"
#include "app/windows/desk_windows.h"
#include "panels/station_layouts.h"

namespace orvane {

/// The station on the screen: a window for each panel, made when the panel is first shown or when there is nothing
/// else to do, and the desk's boxes. It is made before the station starts and goes when it has ended.
class FrontEnd {
 public:
  FrontEnd(EventLoop& loop, Desk& desk, Station& station);
  FrontEnd(const FrontEnd&) = delete;
  FrontEnd& operator=(const FrontEnd&) = delete;

  /// Makes what stands below the main panel; set before that one is shown.
  std::function<QWidget*(QWidget* parent)> belowMain;
  /// The same for the two verdicts.
  std::function<QWidget*(QWidget* parent)> belowVerdict;

  /// The window of a panel; null for one that is not made yet.
  [[nodiscard]] PanelWindow* WindowOf(const Panel& panel) const;

  /// Whoever acts on the station from beside its windows does so by these.
  [[nodiscard]] Hands& TheHands() { return hands_; }

  /// Does what is better done while the station waits anyhow, as it does until then: paints what has changed, and
  /// makes the windows that are to come, so that a run is not held up by those that it brings up.
  void UseFreeTime(TimePoint until);

  /// The display has gone: shows nothing more.
  void Abandon();

  /// Somebody else has the screen: no window and no box of the station comes up on it until `Wake`, which shows
  /// whatever is there by then.
  void Rest();
  void Wake();

 private:
  void Follow(const PanelLayout& panel);
  [[nodiscard]] bool IsVerdict(const Panel& panel) const;
  /// Window managers that know of no windows in front, and none at all, put the one on top that came up last.
  void KeepInFront();
  PanelWindow& Make(const PanelLayout& panel);
  void MakeOneAhead();
  /// Where a window comes up for the first time: a verdict in the middle of the screen, every other one a step off
  /// the one before.
  void Place(PanelWindow& window, const Panel& panel);
  [[nodiscard]] ViewMaker ViewsOf(Panel& panel);

  EventLoop& loop_;
  Hands hands_;
  DeskWindows deskWindows_;
  bool abandoned_ = false;
  bool rests_ = false;
  StationState& state_;
  StationPanels& panels_;
  std::vector<PanelLayout> layouts_;
  std::map<const Panel*, std::unique_ptr<PanelWindow>> windows_;
  /// Those that have come up.
  std::set<const PanelWindow*> placed_;
};

}  // namespace orvane
