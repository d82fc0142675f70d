#pragma once

#include "platform/controls.h"
#include "platform/file_dialogs.h"
#include "platform/panel.h"

namespace orvane {

/// What the transmit runs left behind.
struct FrmAutoCalTxResult : Panel {
  FrmAutoCalTxResult() : Panel("frmAutoCalTxResult", "AutoCAL - TX Results") {}

  Button cmdTxcalClose{*this, "cmdTxcalClose", "Close"};
  Frame fraCalResults{*this, "fraCalResults", "Peak Power Measurement"};
  ListBox listPeakPower{*this, "listPeakPower"};
  Frame fraPowerLevel{*this, "fraPowerLevel", "Power Level"};
  ListBox listPowerLevel{*this, "listPowerLevel"};
  Frame fraCHANNELCAL{*this, "fraCHANNELCAL", "Channel Calibration Peak Power "};
  ListBox listChanCalPeakPower{*this, "listChanCalPeakPower"};
  Frame fraChanCalPowerLevel{*this, "fraChanCalPowerLevel", "Channel Calibration Power Level"};
  ListBox listChanCalPowerLevel{*this, "listChanCalPowerLevel"};
  /// No routine uses it.
  FileDialog dlgTxCalSave{"Tx Calibration Result Save", "(*.xls)|*.xls|All File", "xls", "", ""};
};

/// Stays empty: the receive run shows its rows on frmMPAutoCal.
struct FrmAutoCalRxResult : Panel {
  FrmAutoCalRxResult() : Panel("frmAutoCalRxResult", "AutoCAL - RX Results") {}

  Button cmdAutoCalRxResutlsClose{*this, "cmdAutoCalRxResutlsClose", "Close"};
  Frame fraRawRxResults{*this, "fraRawRxResults", "Rx AGC Raw Tables"};
  ListBox lstRawRxResults{*this, "lstRawRxResults"};
  Frame fraConvertedRxResults{*this, "fraConvertedRxResults", "Rx AGC Converted Tables"};
  ListBox lstConvertedRxResults{*this, "lstConvertedRxResults"};
  Frame fraRxChannelCompensation{*this, "fraRxChannelCompensation", "Channel Compensation"};
  ListBox lstRxChannelCompensation{*this, "lstRxChannelCompensation"};
  Frame fraRxTemperatureCompensation{*this, "fraRxTemperatureCompensation", "Calibrated Channel Bands"};
  ListBox lstRxCalChannelBands{*this, "lstRxCalChannelBands"};
  /// No routine uses it.
  FileDialog dlgRxCalSave{"Rx Calibration Result Save", "(*.xls)|*.xls|All File", "xls", "", ""};
};

/// The verdict of a unit that failed.
struct FrmFail : Panel {
  FrmFail() : Panel("frmFail", "FAIL") {}

  Image Image1{*this, "Image1", "fail"};
  Button Command1{*this, "Command1", "FAIL"};
};

/// The verdict of a unit that passed. Only when not every step was completed the list stands there, in amber as the
/// picture is then, with the verdict's second word and what is to be done: nobody may take such a verdict for a
/// calibrated unit.
struct FrmFailPass : Panel {
  FrmFailPass() : Panel("frmFailPass", "PASS") {
    for (Control* control : {static_cast<Control*>(&lblDoubt), static_cast<Control*>(&lblIncomplete),
                             static_cast<Control*>(&lstIncomplete), static_cast<Control*>(&lblRemedy)}) {
      control->SetVisible(false);
    }
    constexpr Colour kAmber = 0x0000BFFF;
    lblDoubt.SetBackColor(kAmber);
    lblIncomplete.SetBackColor(kAmber);
  }

  Image Image1{*this, "Image1", "pass"};
  Button Command1{*this, "Command1", "PASS"};
  /// "OUT OF TOLERANCE" or "NOT MEASURED".
  Label lblDoubt{*this, "lblDoubt", ""};
  Label lblIncomplete{*this, "lblIncomplete", "Not every step was completed:"};
  ListBox lstIncomplete{*this, "lstIncomplete"};
  Label lblRemedy{*this, "lblRemedy", ""};
};

}  // namespace orvane
