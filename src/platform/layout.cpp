#include "platform/layout.h"

namespace orvane {
namespace {

void Collect(const Layout& layout, std::vector<Control*>& placed) {
  if (layout.control != nullptr) placed.push_back(layout.control);
  if (layout.upDown != nullptr) placed.push_back(layout.upDown);
  for (const Layout& part : layout.parts) Collect(part, placed);
}

}  // namespace

std::vector<Control*> PlacedControls(const Layout& layout) {
  std::vector<Control*> placed;
  Collect(layout, placed);
  return placed;
}

}  // namespace orvane
