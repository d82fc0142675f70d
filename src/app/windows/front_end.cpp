#include "app/windows/front_end.h"

#include <QScreen>
#include <QStatusBar>

#include "app/windows/panel_views.h"

namespace orvane {

FrontEnd::FrontEnd(EventLoop& loop, Desk& desk, Station& station)
    : loop_(loop),
      hands_(loop, station.Nest(), [&desk] { return desk.Clear(); }),
      deskWindows_(loop, desk),
      state_(station.State()),
      panels_(station.Panels()),
      layouts_(LayOutAll(panels_)) {
  for (PanelLayout& layout : layouts_) {
    layout.panel->changed.Connect([this, &layout] { Follow(layout); });
  }
}

PanelWindow* FrontEnd::WindowOf(const Panel& panel) const {
  const auto window = windows_.find(&panel);
  return window == windows_.end() ? nullptr : window->second.get();
}

void FrontEnd::Abandon() {
  abandoned_ = true;
  deskWindows_.Abandon();
  for (const auto& [panel, window] : windows_) {
    if (window) window->setUpdatesEnabled(false);
  }
}

void FrontEnd::Follow(PanelLayout& layout) {
  if (abandoned_) return;
  auto& window = windows_[layout.panel];
  if (!window) {
    if (!layout.panel->Visible()) return;
    window = std::make_unique<PanelWindow>(*layout.panel, layout.layout, hands_, ViewsOf(*layout.panel));
    if (layout.panel == &panels_.main && belowMain) window->statusBar()->addWidget(belowMain(window.get()), 1);
    Place(*window, *layout.panel);
  }
  window->FollowPanel();
}

void FrontEnd::Place(PanelWindow& window, const Panel& panel) {
  constexpr int kStep = 36;
  const QRect room = window.screen()->availableGeometry();
  QRect place(QPoint(), window.size().boundedTo(room.size()));
  if (&panel == &panels_.fail || &panel == &panels_.pass) {
    place.moveCenter(room.center());
  } else {
    place.moveTopLeft(room.topLeft() + QPoint(kStep, kStep) * static_cast<int>(windows_.size() - 1));
    if (!room.contains(place)) place.moveBottomRight(room.bottomRight());
  }
  window.resize(place.size());
  // Its frame with it: the bar that a window is moved by stays on the screen.
  window.move(place.topLeft());
}

ViewMaker FrontEnd::ViewsOf(Panel& panel) {
  return [this, &panel](const std::string& name, QWidget* parent) {
    return MakePanelView(panel, name, state_, loop_, parent);
  };
}

}  // namespace orvane
