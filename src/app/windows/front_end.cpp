#include "app/windows/front_end.h"

namespace orvane {

FrontEnd::FrontEnd(Program& program)
    : program_(program),
      hands_(program.TheWorld().loop, program.TheStation().Nest(),
             [&program] { return program.TheWorld().desk.Clear(); }),
      desk_(program.TheWorld().loop, program.TheWorld().desk),
      layouts_(LayOutAll(program.TheStation().Panels())) {
  for (PanelLayout& layout : layouts_) {
    layout.panel->changed.Connect([this, &layout] { Follow(layout); });
  }
}

void FrontEnd::Follow(PanelLayout& layout) {
  auto& window = windows_[layout.panel];
  if (!window) {
    if (!layout.panel->Visible()) return;
    window = std::make_unique<PanelWindow>(*layout.panel, layout.layout, hands_, ViewsOf(*layout.panel));
  }
  window->FollowPanel();
}

ViewMaker FrontEnd::ViewsOf(const Panel& /*panel*/) {
  return [](const std::string& /*name*/, QWidget* /*parent*/) -> QWidget* { return nullptr; };
}

}  // namespace orvane
