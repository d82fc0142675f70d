#pragma once

#include <array>
#include <string>

#include "base/decimal4.h"
#include "base/numbers.h"

namespace orvane {

/// Station-wide state of the calibration runs.
struct CalState {
  /// "ALL", "TxALL", "END", or "Stop" from the stop control.
  std::string CalMode;
  /// "File", "EEPROM", "EEPROMFile".
  std::string SaveMode;
  bool CalStopRequested = false;
  /// Only `cmdAllCalStart` clears it.
  bool CalFailed = false;
  bool GsmCalDone = false;
  bool DcsCalDone = false;
  /// Nothing sets it.
  bool SpareCalDone = false;

  /// Target power in dBm and first APC DAC value by table position: GSM level - 5, DCS level + 15.
  std::array<Decimal4, 32> PowerIndex{};
  std::array<Integer, 31> InitValueIndex{};
  /// Cable losses in dB, of which five are used; it lives only between a file and the boxes.
  std::array<Decimal4, 41> LossTable{};

  std::string CalSaveFileName;
  bool CalSaveFileOk = false;
};

}  // namespace orvane
