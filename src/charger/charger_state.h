#pragma once

#include <string>

namespace orvane {

/// Station-wide state of the bench instruments and the charger run.
struct ChargerState {
  bool PSReady = false;
  bool LoaderReady = false;
  /// A voltage was sent to the supply.
  bool PSVoltageSet = false;
  /// An error event came from the supply's or the load's control.
  bool powerError = false;
  bool loaderError = false;
  /// The charger run is under way; nothing reads it.
  bool running = false;
  /// Show the completion box at the end of the run; the sequencer clears it for its own run.
  bool BatCalShowDone = false;
  std::string CC2CVADCSaved;
  std::string ShutDownADCSaved;
};

}  // namespace orvane
