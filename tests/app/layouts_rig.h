#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "panels/station_layouts.h"

namespace orvane::test {

/// A layout and all that is in it.
inline std::vector<const Layout*> AllParts(const Layout& layout) {
  std::vector<const Layout*> parts{&layout};
  for (const Layout& part : layout.parts) {
    const auto inner = AllParts(part);
    parts.insert(parts.end(), inner.begin(), inner.end());
  }
  return parts;
}

inline std::vector<std::string> Names(const std::vector<Control*>& controls) {
  std::vector<std::string> names;
  for (const Control* control : controls) names.push_back(control->Name());
  std::ranges::sort(names);
  return names;
}

class Layouts : public testing::Test {
 protected:
  StationPanels panels_;
  std::vector<PanelLayout> layouts_ = LayOutAll(panels_);

  const Layout& Of(const Panel& panel) {
    return std::ranges::find(layouts_, &panel, [](const PanelLayout& each) -> const Panel* { return each.panel; })
        ->layout;
  }
  /// The names of what a frame holds, its own not among them.
  std::vector<std::string> HeldBy(const Panel& panel, const std::string& frame) {
    for (const Layout* part : AllParts(Of(panel))) {
      if (part->kind != Layout::Kind::Group || part->control == nullptr || part->control->Name() != frame) continue;
      auto held = PlacedControls(*part);
      held.erase(held.begin());
      return Names(held);
    }
    return {"no frame " + frame};
  }
};

}  // namespace orvane::test
