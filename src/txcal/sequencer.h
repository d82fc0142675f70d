#pragma once

#include <functional>

#include "link/target_link.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/orvane_main.h"
#include "panels/result_panels.h"
#include "panels/run_guard.h"
#include "platform/boxes.h"
#include "state/cal_state.h"
#include "state/charger_state.h"
#include "state/run_report.h"
#include "txcal/cal_panel.h"
#include "txcal/run_hands.h"

namespace orvane {

/// The panels whose buttons the sequencer presses, and those that it shows.
struct SequencerPanels {
  PanelRef<FrmAutoCal> autoCal;
  PanelRef<OrvaneMain> main;
  PanelRef<FrmMPAutoCal> mpAutoCal;
  PanelRef<FrmAutoCalTxResult> txResult;
  PanelRef<FrmBaseBand> baseBand;
  PanelRef<FrmFail> fail;
  PanelRef<FrmFailPass> pass;
};

/// Chains the calibrations into one run on one Target: both transmit bands, receive and transmit, or the whole run
/// with a verdict. Of the whole run it keeps the report: which steps ran, and how each ended.
class Sequencer {
 public:
  Sequencer(const SequencerPanels& panels, TargetLink& link, CalPanel& calPanel, CalState& cal, ChargerState& charger,
            const LinkTally& tally, RunReport& report, RunHands& hands, RunButtons& buttons, Boxes& boxes);

  /// Answers `cmdTxAllCal`, `Command1` and `cmdAllCalStart`.
  void Connect();

 private:
  void TxAllCal();
  void RfCal();
  void AllCal();

  void WholeRun();
  /// File question, where the save will want a name, and the receive run.
  void AskForFileAndReceive();
  void Transmit();
  void SaveIfAuto();
  [[nodiscard]] bool SavesToFile() const { return cal_.SaveMode == "File" || cal_.SaveMode == "EEPROMFile"; }
  void Charge();
  void ShowVerdict();
  void ClearAway();

  /// After the receive and the transmit step: shows a failure, and says whether the run ends here.
  [[nodiscard]] bool FailedOrStopped();
  /// Runs one step of the report around `work`. What the link went through meanwhile, and what hands changed, becomes
  /// flaws.
  void Step(RunStep step, const std::function<void()>& work);
  void ForgetStop();

  SequencerPanels panels_;
  TargetLink& link_;
  CalPanel& calPanel_;
  CalState& cal_;
  ChargerState& charger_;
  const LinkTally& tally_;
  RunReport& report_;
  RunHands& hands_;
  RunButtons& buttons_;
  Boxes& boxes_;
  /// The run under way has asked for its file: the save mode can be changed behind that.
  bool askedForFile_ = false;
};

}  // namespace orvane
