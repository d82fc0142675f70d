#pragma once

#include <string>

#include "app/command_line.h"

namespace orvane {

/// What `--list` prints: the serial devices of this machine, the devices that stand for COM1 to COM4, and who answers
/// at which address on the routes of the command line. No serial device is opened but an adapter's. Only instruments
/// that the station would speak to are asked, by the "*IDN?" that their Initialize begins with, and each try is
/// bounded by seconds.
[[nodiscard]] std::string DeviceList(const Options& options);

}  // namespace orvane
