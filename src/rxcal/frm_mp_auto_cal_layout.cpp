#include "rxcal/frm_mp_auto_cal_layout.h"

#include "rxcal/frm_mp_auto_cal.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmMPAutoCal& panel) {
  Parts all;
  for (Control* control : panel.Controls()) all.push_back(Of(*control));
  return Grid(4, std::move(all));
}

}  // namespace orvane
