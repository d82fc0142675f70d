#include "charger/frm_base_band_layout.h"

#include "charger/frm_base_band.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmBaseBand& panel) {
  Parts all;
  for (Control* control : panel.Controls()) all.push_back(Of(*control));
  return Grid(4, std::move(all));
}

}  // namespace orvane
