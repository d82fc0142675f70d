#include "txcal/tx_calibration.h"

#include "ramp/ramp_record.h"

namespace orvane {

void TxCalibration::Connect() {
  FrmAutoCal& panel = parts_.panel.Untouched();
  panel.cmdGSM.onClick = [this] { Calibrate(kGsmBand); };
  panel.cmdDCS.onClick = [this] { Calibrate(kDcsBand); };
}

void TxCalibration::Calibrate(const BandRow& band) {
  const RunGuard running(buttons_, parts_.report, band.kind);
  if (bandRun_.Run(band) && channelStep_.Run(band) && Close(band)) phaseCheck_.Run(band);
}

bool TxCalibration::Close(const BandRow& band) {
  if (!steps_.Command("rfe 0", 6)) return false;
  CopyRampTablesToRFParams(parts_.ramp, parts_.rf.RFParams);
  parts_.cal.*band.done = true;
  return true;
}

}  // namespace orvane
