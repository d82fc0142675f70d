#include "panels/station_layouts.h"

#include "panels/frm_auto_cal_layout.h"
#include "panels/frm_base_band_layout.h"
#include "panels/frm_download_layout.h"
#include "panels/frm_mp_auto_cal_layout.h"
#include "panels/frm_ramp_table_layout.h"
#include "panels/orvane_main_layout.h"
#include "panels/result_panels_layout.h"

namespace orvane {

std::vector<PanelLayout> LayOutAll(StationPanels& panels) {
  return {
      {&panels.main, LayOut(panels.main)},           {&panels.downLoad, LayOut(panels.downLoad)},
      {&panels.rampTable, LayOut(panels.rampTable)}, {&panels.autoCal, LayOut(panels.autoCal)},
      {&panels.txResult, LayOut(panels.txResult)},   {&panels.rxResult, LayOut(panels.rxResult)},
      {&panels.mpAutoCal, LayOut(panels.mpAutoCal)}, {&panels.fail, LayOut(panels.fail)},
      {&panels.pass, LayOut(panels.pass)},           {&panels.baseBand, LayOut(panels.baseBand)},
  };
}

}  // namespace orvane
