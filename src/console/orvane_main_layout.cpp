#include "console/orvane_main_layout.h"

#include "console/orvane_main.h"

namespace orvane {

using namespace lay;

Layout LayOut(OrvaneMain& panel) {
  Parts all;
  for (Control* control : panel.Controls()) all.push_back(Of(*control));
  return Grid(4, std::move(all));
}

}  // namespace orvane
