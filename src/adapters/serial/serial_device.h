#pragma once

#include <termios.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "adapters/serial/line_counts.h"
#include "adapters/serial/line_settings.h"
#include "adapters/serial/marked_bytes.h"

namespace orvane {

/// What is wrong with a serial device, in the operator's words; the text does not name the device.
class SerialFailure : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A serial device of this machine, open for this process alone. Nothing waits but Write.
class SerialDevice {
 public:
  /// Opens the device (a symbolic link will do), sets the line up and drops what lay in its buffers. Locks of every
  /// kind count: the terminal's own, which does not bind a superuser, a lock on the file, and a dial-up program's
  /// lock file.
  /// @throws SerialFailure: missing, forbidden (with the group that may use it), in use (by whom), no serial line.
  SerialDevice(const std::string& path, const LineSettings& settings, bool hardwareHandshake);
  SerialDevice(const SerialDevice&) = delete;
  SerialDevice& operator=(const SerialDevice&) = delete;
  /// Leaves the terminal's settings as they were found. What the device did not take yet is dropped.
  ~SerialDevice();

  [[nodiscard]] int Descriptor() const { return descriptor_; }

  /// Some of what has been received; empty when there is nothing. What is left keeps the descriptor readable.
  /// @throws SerialFailure when the device has gone.
  [[nodiscard]] std::string Read();
  /// Hands all bytes to the system; waits while it takes none, 2 seconds at most.
  /// @throws SerialFailure when the device has gone or takes no bytes.
  void Write(std::string_view bytes);

  /// What has happened on the line since the last call, as the control's event codes. Costs one call of the system,
  /// and none on a line whose driver once refused to tell, such as a pseudo-terminal's, which never has any.
  [[nodiscard]] std::vector<int> LineEvents();

 private:
  [[nodiscard]] std::string WhyGone(int error) const;
  void TakeForItself();
  void SetUp(const LineSettings& settings, bool hardwareHandshake);
  [[nodiscard]] LineCounts Counts();
  /// By the driver's own counters. @return false when it has none.
  [[nodiscard]] bool Counted(LineCounts& counts);
  [[nodiscard]] int ModemLines();

  std::string path_;
  bool parity_;
  int descriptor_ = -1;
  termios found_{};
  MarkedBytes marks_;
  LineCounts counts_;
  /// For a device that does not count its modem lines' changes.
  int modemLines_ = 0;
  bool tellsCounts_ = true;
  bool tellsModemLines_ = true;
};

}  // namespace orvane
