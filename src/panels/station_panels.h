#pragma once

#include <vector>

#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/frm_download.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/frm_ramp_table.h"
#include "panels/orvane_main.h"
#include "panels/result_panels.h"

namespace orvane {

/// Every panel of the station.
struct StationPanels {
  StationPanels();
  ~StationPanels();

  OrvaneMain main;
  FrmDownLoad downLoad;
  FrmRampTable rampTable;
  FrmAutoCal autoCal;
  FrmAutoCalTxResult txResult;
  FrmAutoCalRxResult rxResult;
  FrmMPAutoCal mpAutoCal;
  FrmFail fail;
  FrmFailPass pass;
  FrmBaseBand baseBand;

  /// In the order above.
  [[nodiscard]] std::vector<Panel*> All();
};

}  // namespace orvane
