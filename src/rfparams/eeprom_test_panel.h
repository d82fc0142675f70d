#pragma once

#include <string>

#include "base/numbers.h"
#include "panels/frm_download.h"
#include "platform/panel.h"
#include "platform/serial_control.h"

namespace orvane {

/// The lower half of `frmDownLoad`: the settings of a hand test of the Target's EEPROM, and the entry of its data.
/// The test itself has no action behind it.
class EepromTestPanel {
 public:
  EepromTestPanel(PanelRef<FrmDownLoad> panel, SerialControl& mscomTarget)
      : panel_(panel), mscomTarget_(mscomTarget) {}

  /// Answers the panel's load, the four options and the keys of `txtEepromDataWrite`.
  void Connect();

 private:
  void Load();
  void AddressBytes();
  void AddressPages();
  void OnDataKey(char32_t key);
  void TakeEntry();
  void CloseEntry();

  PanelRef<FrmDownLoad> panel_;
  SerialControl& mscomTarget_;
  /// Most bytes or pages of one entry.
  Long lengthLimit_ = 0;
  /// Entries so far. Nothing sets it back.
  Long entries_ = 0;
  Long nextAddress_ = 0;
};

}  // namespace orvane
