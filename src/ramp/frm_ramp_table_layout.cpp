#include "ramp/frm_ramp_table_layout.h"

#include "ramp/frm_ramp_table.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmRampTable& panel) {
  Parts all;
  for (Control* control : panel.Controls()) all.push_back(Of(*control));
  return Grid(4, std::move(all));
}

}  // namespace orvane
