#pragma once

#include "txcal/run_steps.h"
#include "txcal/search_run.h"

namespace orvane {

/// Power calibration of one band: from the weakest level to the strongest, the APC DAC value that makes the measured
/// power equal the level's target goes into `tx_Level(level).apc` of the record. What a run that ends early has
/// stored stays.
class BandRun {
 public:
  BandRun(const TxRunParts& parts, RunSteps& steps, SearchRun& searchRun)
      : parts_(parts), steps_(steps), searchRun_(searchRun) {}

  /// @return whether all levels were found and the channel step may follow.
  [[nodiscard]] bool Run(const BandRow& band);

 private:
  [[nodiscard]] bool MayStart(const BandRow& band);
  void ShowResults();
  void SetUpTestSet(const BandRow& band);
  [[nodiscard]] bool MayTransmit(const BandRow& band);
  /// @return false when it was stopped between two tables.
  [[nodiscard]] bool SendRampTables(const BandRow& band);
  [[nodiscard]] bool TransmitterOn(const BandRow& band);
  [[nodiscard]] bool FindLevel(const BandRow& band, int level, PowerSearch& search);
  void SetUpSamples(const BandRow& band);

  TxRunParts parts_;
  RunSteps& steps_;
  SearchRun& searchRun_;
};

}  // namespace orvane
