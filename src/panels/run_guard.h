#pragma once

#include <array>

#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/frm_mp_auto_cal.h"
#include "state/run_report.h"

namespace orvane {

/// The buttons that start a calibration run. The bring-up of a Target presses one of them by itself.
[[nodiscard]] inline std::array<Button*, 7> RunStarters(FrmAutoCal& autoCal, FrmMPAutoCal& mpAutoCal,
                                                        FrmBaseBand& baseBand) {
  return {&autoCal.cmdGSM,
          &autoCal.cmdDCS,
          &autoCal.cmdTxAllCal,
          &autoCal.cmdAllCalStart,
          &autoCal.Command1,
          &mpAutoCal.cmdMPRxAllAutoCal,
          &baseBand.cmdChargerAutoCal};
}

/// Those buttons as runs hold them. While one of the runs is under way an operator can start none of them:
/// a second run inside the first one's reply wait would drive the same Target and the same test set. The station's
/// own nested clicks are not held up.
class RunButtons {
 public:
  /// Holds the panels without touching them: a button that nobody has seen is held all the same.
  RunButtons(FrmAutoCal& autoCal, FrmMPAutoCal& mpAutoCal, FrmBaseBand& baseBand)
      : buttons_(RunStarters(autoCal, mpAutoCal, baseBand)) {}
  RunButtons(const RunButtons&) = delete;
  RunButtons& operator=(const RunButtons&) = delete;

  [[nodiscard]] bool Held() const { return runs_ > 0; }

 private:
  friend class RunGuard;

  void Hold() {
    if (runs_++ == 0) EnableAll(false);
  }
  void Release() {
    if (--runs_ == 0) EnableAll(true);
  }
  void EnableAll(bool enabled) {
    for (Button* button : buttons_) button->SetEnabled(enabled, enabled ? "" : "A run is under way.");
  }

  std::array<Button*, 7> buttons_;
  int runs_ = 0;
};

/// A run under way, for as long as it is on the stack; runs started by a run count with it.
class RunGuard {
 public:
  RunGuard(RunButtons& buttons, RunReport& report, RunKind kind) : buttons_(buttons), report_(report) {
    buttons_.Hold();
    report_.RunBegins(kind);
  }
  RunGuard(const RunGuard&) = delete;
  RunGuard& operator=(const RunGuard&) = delete;
  ~RunGuard() {
    report_.RunIsOver();
    buttons_.Release();
  }

 private:
  RunButtons& buttons_;
  RunReport& report_;
};

}  // namespace orvane
