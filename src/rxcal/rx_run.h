#pragma once

#include <functional>
#include <optional>

#include "instruments/test_set.h"
#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/run_guard.h"
#include "rxcal/rx_measurement.h"
#include "rxcal/rx_table.h"
#include "state/cal_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"
#include "state/rx_channels.h"
#include "state/rx_trail.h"

namespace orvane {

/// The receive calibration of a Target, `cmdMPRxAllAutoCal`: levels of twelve channels, the gain of two bands
/// (G-MAGIC), and the channel compensation of three. Results go to `RFParams` and the panel, nothing to the Target.
class RxRun {
 public:
  /// `downlinkParamSet` prepares the Target's measurement reports; it says whether all of it succeeded.
  RxRun(TargetLink& link, ReplyState& reply, TestSet& testSet, PanelRef<FrmAutoCal> autoCal,
        PanelRef<FrmMPAutoCal> panel, CalState& cal, RFState& rf, Boxes& boxes, RunReport& report, RxTrail& trail,
        RunButtons& runButtons, std::function<bool()> downlinkParamSet);

  void Connect();
  void Run();

 private:
  using Points = std::array<RxPoint, 12>;
  struct Band;
  struct Tables;
  static const Band kGsm;
  static const Band kDcs;

  bool Calibrate();
  void ForgetStop();
  bool SetUpTarget();
  bool SetUpTestSet();
  [[nodiscard]] RxChannels ReadChannels();
  std::optional<Tables> BuildTables(const Points& points);
  std::optional<RxBandTable> BuildBand(const Band& band, const Points& points);
  bool StoreGMagic(const Band& band, Integer level);
  void StoreCompensations(const Tables& tables, Integer gsmReference);

  TargetLink& link_;
  ReplyState& reply_;
  TestSet& testSet_;
  PanelRef<FrmAutoCal> autoCal_;
  PanelRef<FrmMPAutoCal> panel_;
  CalState& cal_;
  RFState& rf_;
  Boxes& boxes_;
  RunReport& report_;
  RunButtons& runButtons_;
  std::function<bool()> downlinkParamSet_;
  RxMeasurement measurement_;
  /// Level that the Target was set to expect, above -74 dBm.
  Integer rxSetValue_ = 0;
  /// Level of the DCS reference channel; 0 when the band has found none.
  Integer dcsReference_ = 0;
};

}  // namespace orvane
