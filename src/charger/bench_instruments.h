#pragma once

#include "charger/bench_session.h"

namespace orvane {

/// The power supply that stands in for the battery.
class BenchSupply {
 public:
  BenchSupply(CWGPIB& CWGPIBPower, PanelRef<FrmBaseBand> panel, PanelRef<OrvaneMain> main, ChargerState& state,
              ResultsConsole& console, Boxes& boxes)
      : session_(kSupplySession, CWGPIBPower, panel, main, state, console, boxes),
        panel_(panel),
        state_(state),
        boxes_(boxes) {}

  void Connect();
  void LetGo() { session_.LetGo(); }

 private:
  void SetVoltage();
  void ToggleOutput();

  BenchSession session_;
  PanelRef<FrmBaseBand> panel_;
  ChargerState& state_;
  Boxes& boxes_;
};

/// The electronic load.
class BenchLoad {
 public:
  BenchLoad(CWGPIB& CWGPIBLoader, PanelRef<FrmBaseBand> panel, PanelRef<OrvaneMain> main, ChargerState& state,
            ResultsConsole& console, Boxes& boxes)
      : session_(kLoadSession, CWGPIBLoader, panel, main, state, console, boxes), panel_(panel), boxes_(boxes) {}

  /// `switchesOn`: an Initialize switches the load's input on, which something else switches off.
  void Connect(bool switchesOn = false);
  void LetGo() { session_.LetGo(); }

 private:
  void SetCurrent();
  void SetResister();

  BenchSession session_;
  PanelRef<FrmBaseBand> panel_;
  Boxes& boxes_;
};

}  // namespace orvane
