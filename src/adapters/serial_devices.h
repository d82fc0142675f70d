#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace orvane {

/// A serial device that this machine has, free or not.
struct ListedDevice {
  std::string path;
  /// "USB-Serial Controller"; empty when nothing is known of it.
  std::string description;
  /// Names that stay its own whichever socket it is plugged into.
  std::vector<std::string> lastingNames;
};

[[nodiscard]] std::vector<ListedDevice> ListedDevices();

/// The links in the folder that lead to the device, in order.
[[nodiscard]] std::vector<std::string> LinksTo(const std::string& device,
                                               const std::filesystem::path& folder = "/dev/serial/by-id");

/// "free", or what would keep the station from opening it, as far as that can be told without opening it: an open
/// raises lines that some devices act upon.
[[nodiscard]] std::string SerialDeviceState(const std::string& device);

}  // namespace orvane
