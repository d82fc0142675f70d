#include "rfparams/frm_download_layout.h"

#include "rfparams/frm_download.h"

namespace orvane {

using namespace lay;

Layout LayOut(FrmDownLoad& panel) {
  Parts all;
  for (Control* control : panel.Controls()) all.push_back(Of(*control));
  return Grid(4, std::move(all));
}

}  // namespace orvane
