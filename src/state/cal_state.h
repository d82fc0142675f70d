#pragma once

#include <array>
#include <string>

#include "base/decimal4.h"
#include "base/numbers.h"
#include "platform/files.h"

namespace orvane {

/// Station-wide state of the calibration runs.
struct CalState {
  /// "ALL", "TxALL", "END", or "Stop" from the stop control.
  std::string CalMode;
  /// "File", "EEPROM", "EEPROMFile".
  std::string SaveMode;
  bool CalStopRequested = false;
  /// How often an operator asked for a stop, and whether he has not withdrawn the last one. A failure status asks for
  /// one too, but does not count here.
  long stopsAsked = 0;
  bool stopStands = false;
  /// The last save ended at a stop between two pieces of its transfer: nothing was committed.
  bool saveStopped = false;
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
  /// What is wrong with the file that the losses come from, as a sentence; empty when nothing is.
  std::string lossDamage;

  std::string CalSaveFileName;
  /// What becomes of a file that stands there. One that has been written is overlaid by the next that goes there
  /// unasked.
  OldFile oldSaveFile = OldFile::IsOverlaid;
  bool CalSaveFileOk = false;
};

}  // namespace orvane
