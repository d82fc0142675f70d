#pragma once

#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/frm_download.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/panel.h"

namespace orvane {

/// What the main panel does around its tabs: shows other panels, ends the station, and works the bench supply, which
/// lives on frmBaseBand.
class MainPanel {
 public:
  MainPanel(PanelRef<OrvaneMain> main, PanelRef<FrmAutoCal> autoCal, PanelRef<FrmBaseBand> baseBand,
            PanelRef<FrmDownLoad> downLoad, Boxes& boxes)
      : main_(main), autoCal_(autoCal), baseBand_(baseBand), downLoad_(downLoad), boxes_(boxes) {}

  void Connect();

 private:
  void ConnectSupply(OrvaneMain& main);
  /// Asks, and on OK ends the station at once, with nothing closed and nothing saved. @throws StationEnded
  void Exit();

  PanelRef<OrvaneMain> main_;
  PanelRef<FrmAutoCal> autoCal_;
  PanelRef<FrmBaseBand> baseBand_;
  PanelRef<FrmDownLoad> downLoad_;
  Boxes& boxes_;
};

}  // namespace orvane
