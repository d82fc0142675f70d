#pragma once

#include <optional>
#include <string>

#include "txcal/power_search.h"
#include "txcal/run_steps.h"

namespace orvane {

/// Drives a power search with the Target and the test set.
class SearchRun {
 public:
  SearchRun(const TxRunParts& parts, RunSteps& steps) : parts_(parts), steps_(steps) {}

  /// Searches until a DAC value is accepted. Each pass goes on the trail.
  /// A value that was accepted without reaching its target, or was never measured, is told as a flaw.
  /// @return false when the run ends here.
  [[nodiscard]] bool Run(const SearchRow& row, PowerSearch& search, const SearchSubject& subject);

  /// Whether the selected test set is one whose readings are read.
  [[nodiscard]] bool TakesReadings() const { return parts_.testSet.Kind() == Dialect::Hp8960; }

 private:
  /// One pass of the search up to its measuring. No value: the run ends here.
  [[nodiscard]] std::optional<Decimal4> MovedAndMeasured(const SearchRow& row, PowerSearch& search,
                                                         const std::string& subject);
  [[nodiscard]] bool ReadPower(const SearchRow& row, Integer dac, const std::string& subject);
  void ReadOnce(Integer dac);
  [[nodiscard]] std::optional<Decimal4> PowerInBox(const SearchRow& row, const std::string& subject);
  void TellFlaws(const PowerSearch& search, const std::string& subject);
  void TellReadings(const PowerSearch& search, const SearchSubject& subject);

  TxRunParts parts_;
  RunSteps& steps_;
  /// DAC value in the Target when the last reading was taken.
  int measuredAt_ = 0;
};

}  // namespace orvane
