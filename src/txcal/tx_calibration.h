#pragma once

#include "panels/run_guard.h"
#include "txcal/band_run.h"
#include "txcal/channel_step.h"
#include "txcal/phase_check.h"

namespace orvane {

/// What `cmdGSM` and `cmdDCS` do: the levels of a band, its channels, the ramp tables into the record, and the check
/// of the phase error.
class TxCalibration {
 public:
  TxCalibration(const TxRunParts& parts, RunButtons& buttons)
      : parts_(parts),
        buttons_(buttons),
        steps_(parts),
        searchRun_(parts, steps_),
        bandRun_(parts, steps_, searchRun_),
        channelStep_(parts, steps_, searchRun_),
        phaseCheck_(parts, steps_) {}
  TxCalibration(const TxCalibration&) = delete;
  TxCalibration& operator=(const TxCalibration&) = delete;

  void Connect();

 private:
  void Calibrate(const BandRow& band);
  /// The transmitter goes off, the ramp tables into the record, and the band counts as done.
  [[nodiscard]] bool Close(const BandRow& band);

  TxRunParts parts_;
  RunButtons& buttons_;
  RunSteps steps_;
  SearchRun searchRun_;
  BandRun bandRun_;
  ChannelStep channelStep_;
  PhaseCheck phaseCheck_;
};

}  // namespace orvane
