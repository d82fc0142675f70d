#pragma once

#include <string>

#include "base/numbers.h"

namespace orvane {

/// Station-wide state of the main panel: the log, and the serial settings as the last bring-up filled them.
struct ConsoleState {
  /// Number of the open log file; 0 when logging is off.
  Integer LogFileNumber = 0;
  bool LogOffState = true;
  std::string LogFileName;

  Integer SerialPortNumber = 0;
  std::string SerialBaud;
  std::string SerialParity;
  std::string SerialDataBits;
  std::string SerialStopBits;
  Integer SerialInBuffer = 0;
  Integer SerialOutBuffer = 0;
  Long SerialInputLength = 0;
  std::string TargetName;
  bool SerialPortState = false;
};

}  // namespace orvane
