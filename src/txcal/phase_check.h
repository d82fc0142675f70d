#pragma once

#include <optional>

#include "txcal/run_steps.h"

namespace orvane {

/// RMS and peak phase error as the test set gave them, and the frequency error in hertz, where it is a number.
struct PhaseError {
  Decimal4 rms;
  Decimal4 peak;
  std::optional<double> frequency{};
};

/// The second to fourth field of a reading of at least four. Nothing is judged by the fourth, so anything may stand
/// there.
/// @throws StationFailure for fewer fields, or fields that are no numbers.
[[nodiscard]] PhaseError PhaseErrorOf(std::string_view reading);

/// Check of the transmitter's phase error on the reference channel, at the end of a band. It only warns.
class PhaseCheck {
 public:
  PhaseCheck(const TxRunParts& parts, RunSteps& steps) : parts_(parts), steps_(steps) {}

  void Run(const BandRow& band);

 private:
  void TellReadings(const BandRow& band, const PhaseError& error);
  [[nodiscard]] std::string Measured();
  void Judge(const BandRow& band, std::string_view what, std::string_view inReport, Decimal4 value, int limit);

  TxRunParts parts_;
  RunSteps& steps_;
};

}  // namespace orvane
