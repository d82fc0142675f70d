#pragma once

#include <string>

#include "base/decimal4.h"
#include "link/target_link.h"
#include "panels/frm_base_band.h"
#include "panels/run_guard.h"
#include "platform/boxes.h"
#include "platform/gpib.h"
#include "state/cal_state.h"
#include "state/charger_state.h"
#include "state/run_report.h"

namespace orvane {

/// `cmdChargerAutoCal`: the raw ADC counts of a real board at 4.2 V and at the shut-down voltage, with the bench
/// supply in the battery's place, accepted by the reply decoder's windows and written to the Target's flash.
class ChargerRun {
 public:
  ChargerRun(TargetLink& link, ReplyState& reply, CWGPIB& CWGPIBPower, PanelRef<FrmBaseBand> panel,
             ChargerState& state, CalState& cal, Boxes& boxes, RunReport& report, RunButtons& runButtons)
      : link_(link),
        reply_(reply),
        power_(CWGPIBPower),
        panel_(panel),
        state_(state),
        cal_(cal),
        boxes_(boxes),
        report_(report),
        runButtons_(runButtons) {}

  void Connect();
  void Run();

 private:
  void Calibrate();
  /// The measuring half, from the rest voltage to the write. @return whether the run goes on to its end.
  bool Measure(Decimal4 rest);
  struct Threshold;
  static const Threshold kFull;
  static const Threshold kShutDown;
  bool ReadUntilAccepted(Button& read, const TextBox& accepted, Decimal4 rest, const Threshold& threshold);
  void Fail(Decimal4 rest, const char* words);
  void SetSupply(Decimal4 volts);
  void Leave(const char* words);

  TargetLink& link_;
  ReplyState& reply_;
  CWGPIB& power_;
  PanelRef<FrmBaseBand> panel_;
  ChargerState& state_;
  CalState& cal_;
  Boxes& boxes_;
  RunReport& report_;
  RunButtons& runButtons_;
};

}  // namespace orvane
