#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "panels/frm_base_band.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/gpib.h"
#include "results/results_console.h"
#include "state/charger_state.h"

namespace orvane {

/// What the supply and the load do not have in common.
struct BenchSessionRow {
  BenchSessionFace FrmBaseBand::*face;
  /// The value that must stand there before Initialize, and the box's words when it does not.
  TextBox FrmBaseBand::*value;
  std::string_view inputValue;
  std::string_view inputTimeOut;
  /// Not always the default.
  std::string_view primAddressReset;
  bool ChargerState::*ready;
  GpibAddress ChargerState::*address;
  bool ChargerState::*error;
};

inline constexpr BenchSessionRow kSupplySession{
    &FrmBaseBand::supply,   &FrmBaseBand::txtPSVoltage,   "Input Voltage",          "Input Time Out", "6",
    &ChargerState::PSReady, &ChargerState::supplyAddress, &ChargerState::powerError};
inline constexpr BenchSessionRow kLoadSession{
    &FrmBaseBand::load,         &FrmBaseBand::TxtLoaderCurrent, "Input Current value",     "Select Time Out", "5",
    &ChargerState::LoaderReady, &ChargerState::loaderAddress,   &ChargerState::loaderError};

/// The session to one bench instrument: Initialize, Reset, the input limits of its boxes, and its error event. A
/// failure on the bus is no failure of the operation: it shows its box, is remembered, and the operation goes on.
class BenchSession {
 public:
  BenchSession(const BenchSessionRow& row, CWGPIB& control, PanelRef<FrmBaseBand> panel, PanelRef<OrvaneMain> main,
               ChargerState& state, ResultsConsole& console, Boxes& boxes)
      : row_(row), control_(control), panel_(panel), main_(main), state_(state), console_(console), boxes_(boxes) {}

  void Connect();

  /// Runs as soon as an Initialize has made the instrument ready; and behind a Reset.
  std::function<void()> onReady;
  std::function<void()> onReset;

  /// Somebody else speaks to the instrument: it has to be initialized before it is spoken to again.
  void LetGo();

  [[nodiscard]] bool Ready() const { return state_.*row_.ready; }
  void Write(const std::string& text) { control_.Write(text); }

 private:
  void Initialize();
  void Reset();
  void ShowAsNew();
  [[nodiscard]] std::string_view MissingInput() const;
  void Configure();
  void ConnectInputLimits();
  void OnError(const GpibFault& fault);

  const BenchSessionRow& row_;
  CWGPIB& control_;
  PanelRef<FrmBaseBand> panel_;
  PanelRef<OrvaneMain> main_;
  ChargerState& state_;
  ResultsConsole& console_;
  Boxes& boxes_;
};

}  // namespace orvane
