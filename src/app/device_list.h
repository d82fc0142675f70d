#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "adapters/serial_devices.h"
#include "app/command_line.h"

namespace orvane {

/// Who answers, or not, on a route of the command line.
struct ListedInstrument {
  /// No value: what is told is of the route itself.
  std::optional<int> address;
  std::string route;
  /// What it says of itself, on one line; no value for one that did not answer or was not asked.
  std::optional<std::string> answer{};
  /// Why there is no answer, with address and route; "listens, and was not asked".
  std::string words{};
  /// It has a route of its own.
  bool isNamed = false;
};

/// What is there before anything is run.
struct DeviceList {
  struct SerialDevice {
    ListedDevice device;
    std::string state;
  };
  struct TargetLine {
    std::string device;
    std::string state;
  };
  std::vector<SerialDevice> serialDevices;
  /// COM1 to COM4.
  std::vector<TargetLine> lines;
  std::vector<ListedInstrument> instruments;

  /// Whether each instrument that has a route of its own has answered.
  [[nodiscard]] bool AllNamedAnswer() const;
  /// For a person, and for a program: one JSON object.
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] std::string JsonText() const;
};

/// Looks at the serial devices of this machine, the devices that stand for COM1 to COM4, and asks who answers at
/// which address on the routes of the command line. No serial device is opened but an adapter's. Only instruments
/// that the station would speak to are asked, by the "*IDN?" that their Initialize begins with, and each try is
/// bounded by seconds.
[[nodiscard]] DeviceList ListDevices(const Options& options);

}  // namespace orvane
