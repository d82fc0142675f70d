#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <map>
#include <memory>

#include "adapters/qt/panel_window.h"
#include "app/windows/panel_views.h"
#include "panels/station_layouts.h"
#include "station/virtual_station.h"

namespace orvane::test {

/// A station on the virtual bench in virtual time, seen and acted upon through windows. Its boxes answer themselves.
class WindowedStation {
 public:
  WindowedStation() : layouts_(LayOutAll(on.Panels())) {}

  [[nodiscard]] PanelWindow& WindowOf(Panel& panel) {
    auto& window = windows_[&panel];
    if (!window) {
      for (const PanelLayout& layout : layouts_) {
        if (layout.panel == &panel)
          window = std::make_unique<PanelWindow>(panel, layout.layout, hands_, ViewsOf(panel));
      }
    }
    window->FollowPanel();
    return *window;
  }
  template <class Widget = QWidget>
  [[nodiscard]] Widget& Of(Control& control) {
    auto* widget = WindowOf(control.Owner()).findChild<Widget*>(ToQt(control.Name()));
    if (widget == nullptr) throw std::runtime_error("No widget stands for " + control.Name());
    return *widget;
  }
  /// Lets the acts that the widgets posted take place, and their outcome be shown.
  void Settle() {
    QCoreApplication::processEvents();
    on.loop.Yield(on.loop.Now());
    QCoreApplication::processEvents();
  }

  VirtualStation on;

 private:
  ViewMaker ViewsOf(Panel& panel) {
    return [this, &panel](const std::string& name, QWidget* parent) {
      return MakePanelView(panel, name, on.station.State(), on.loop, parent);
    };
  }

  std::vector<PanelLayout> layouts_;
  Hands hands_{on.loop, on.station.Nest(), [] { return true; }};
  std::map<Panel*, std::unique_ptr<PanelWindow>> windows_;
};

}  // namespace orvane::test
