#pragma once

#include <optional>
#include <string>

#include "platform/gpib.h"
#include "platform/signal.h"

namespace orvane {

/// What the supply and the load failed in, for whoever shows it: their box has fixed words and the numbers only.
class InstrumentFaults {
 public:
  Signal<const GpibFault&> told;
  void Tell(const GpibFault& fault) {
    last_ = fault;
    told.Emit(fault);
  }
  /// The instrument at that address was initialized again.
  void Settle(Integer address) {
    if (last_ && last_->address == address) last_.reset();
  }
  /// The last one, unless it was settled.
  [[nodiscard]] const std::optional<GpibFault>& Last() const { return last_; }

 private:
  std::optional<GpibFault> last_;
};

/// Station-wide state of the bench instruments and the charger run.
struct ChargerState {
  bool PSReady = false;
  bool LoaderReady = false;
  /// Where the sessions were made to.
  GpibAddress supplyAddress;
  GpibAddress loaderAddress;
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
  InstrumentFaults faults;
  /// A session to the supply or to the load is being made.
  Signal<> configured;
  /// What was to be off and could not be made sure to be, in words; empty when nothing was.
  std::string notOff;
};

}  // namespace orvane
