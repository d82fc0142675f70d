#pragma once

#include <functional>

#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_mp_auto_cal.h"
#include "platform/boxes.h"
#include "state/cal_state.h"

namespace orvane {

/// What the boxes and the close button of frmMPAutoCal do, and the run of receive calibration and save alone.
class MpPanel {
 public:
  /// `downloadSaveFileName` asks for the result file.
  MpPanel(PanelRef<FrmMPAutoCal> panel, PanelRef<FrmAutoCal> autoCal, CalState& cal, TargetLink& link, Boxes& boxes,
          std::function<void()> downloadSaveFileName)
      : panel_(panel),
        autoCal_(autoCal),
        cal_(cal),
        link_(link),
        boxes_(boxes),
        downloadSaveFileName_(std::move(downloadSaveFileName)) {}

  void Connect();
  /// Receive calibration with its save; no button of the station leads here.
  void MPRxCalRun();

 private:
  PanelRef<FrmMPAutoCal> panel_;
  PanelRef<FrmAutoCal> autoCal_;
  CalState& cal_;
  TargetLink& link_;
  Boxes& boxes_;
  std::function<void()> downloadSaveFileName_;
};

}  // namespace orvane
