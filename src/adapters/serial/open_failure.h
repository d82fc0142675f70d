#pragma once

#include <string>

namespace orvane {

/// Why a serial device did not open, in the operator's words, by the error of the system's call: missing, forbidden
/// (with the group that may use it), in use (by whom), no serial line. The text does not name the device.
[[nodiscard]] std::string WhyNotOpened(const std::string& path, int error);

}  // namespace orvane
