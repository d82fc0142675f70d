#pragma once

#include <array>

#include "txcal/run_steps.h"
#include "txcal/search_run.h"

namespace orvane {

/// Correction codes by measured channel; 0: not set. Both bands fill 0..2, DCS derives 3.
using ChannelCodes = std::array<Integer, 4>;

/// Code for a DAC value that lies `difference` above the reference value.
[[nodiscard]] Integer ChannelCodeFor(const BandRow& band, int difference);
/// Fourth code: the second one, if it and the third both correct something.
[[nodiscard]] Integer FourthCodeOf(const ChannelCodes& codes);

/// Channel calibration of one band: the power search at the strongest level on three channels; what their DAC values
/// differ from the level's own becomes codes in table 3 of the record's channel segments.
class ChannelStep {
 public:
  ChannelStep(const TxRunParts& parts, RunSteps& steps, SearchRun& searchRun)
      : parts_(parts), steps_(steps), searchRun_(searchRun) {}

  /// @return whether the codes are stored and the run may be closed.
  [[nodiscard]] bool Run(const BandRow& band);

  /// Tells the operator of a code that was not set and offers to end the station.
  /// @throws StationEnded when he takes the offer.
  void LookAfter(const ChannelCodes& codes);

 private:
  [[nodiscard]] bool MeasureAndStore(const BandRow& band, ChannelCodes& codes);
  void Begin(const BandRow& band);
  /// DAC value found on the channel. No value: the run ends here.
  [[nodiscard]] std::optional<Integer> FindDac(const BandRow& band, int channel);
  [[nodiscard]] bool TuneBoth(const BandRow& band, const std::string& channel);
  void Store(const BandRow& band, const ChannelCodes& codes);

  TxRunParts parts_;
  RunSteps& steps_;
  SearchRun& searchRun_;
};

}  // namespace orvane
