#include "app/device_list.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <vector>

#include "adapters/gpib/native_gpib.h"
#include "adapters/serial_devices.h"
#include "base/text.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// Where the test set, the supply and the load stand as the panels come up.
constexpr std::array kUsualAddresses{1, 2, 5};
constexpr auto kAnswerTime = 1s;
/// An adapter that starts afresh when its device is opened hears nothing for a while.
constexpr auto kRestartTime = 3s;
constexpr std::size_t kLongestAnswer = 200;

std::string LineFor(int address, const std::string& route, const std::string& what) {
  return "  Instrument at address " + std::to_string(address) + ", route " + route + ": " + what + "\n";
}

/// What it says of itself, on one line.
std::string Readable(const std::string& reply) {
  std::string text(TrimBlanksAndLineEnds(reply));
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return text.empty() ? "an empty answer" : TextOfBytes(text);
}

void BackToLocal(GpibSession& session) {
  try {
    session.Local();
  } catch (const GpibError&) {
    // It has answered, which is what was asked.
  }
}

std::string Asked(GpibBus& bus, int address, const std::string& route, TimePoint takenWithin = kAnswerTime) {
  try {
    const auto session = bus.Open({0, static_cast<Integer>(address), 0});
    session->Write("*IDN?", takenWithin);
    const std::string reply = session->Read(kLongestAnswer, kAnswerTime);
    BackToLocal(*session);
    return LineFor(address, route, Readable(reply));
  } catch (const GpibError& error) {
    return "  " + error.Text() + "\n";
  }
}

/// The usual addresses that have no route of their own.
std::vector<int> UsualOnTheBus(const GpibRoutes& routes) {
  std::vector<int> addresses;
  for (const int address : kUsualAddresses) {
    if (!routes.instruments.contains(address)) addresses.push_back(address);
  }
  return addresses;
}

/// Everybody who listens, of whom those at a usual address are asked.
std::string NativeBusList(const GpibRoutes& routes, const std::vector<int>& usual) {
  std::vector<int> listeners;
  try {
    listeners = NativeGpib().Listeners(0);
  } catch (const GpibError& error) {
    return "  " + error.Text() + "\n";
  }
  RoutedGpibBus bus({routes.bus, {}});
  const std::string route = RouteText(routes.bus);
  std::string text;
  for (const int address : listeners) {
    const bool isUsual = std::find(usual.begin(), usual.end(), address) != usual.end();
    text += isUsual ? Asked(bus, address, route) : LineFor(address, route, "listens, and was not asked");
  }
  return text.empty() ? "  Route " + route + ": nobody listens at the addresses 0 to 30.\n" : text;
}

/// One wire: one instrument at a time.
std::string BusList(const GpibRoutes& routes, const std::vector<int>& usual) {
  if (std::holds_alternative<NativeRoute>(routes.bus)) return NativeBusList(routes, usual);
  const bool mayRestart = std::holds_alternative<PrologixSerialRoute>(routes.bus);
  RoutedGpibBus bus({routes.bus, {}});
  // As long as it is there the adapter's connection stays, and is made once for all.
  const auto held = bus.Open({0, kUsualAddresses.front(), 0});
  std::string text;
  for (const int address : usual) {
    text += Asked(bus, address, RouteText(routes.bus), mayRestart ? kRestartTime : kAnswerTime);
  }
  return text;
}

std::string InstrumentList(const GpibRoutes& routes) {
  // Routes know nothing of each other and wait side by side.
  std::vector<std::future<std::string>> parts;
  for (const auto& [address, route] : routes.instruments) {
    parts.push_back(std::async(std::launch::async, [address = address, route = route] {
      RoutedGpibBus bus({NativeRoute{}, {{address, route}}});
      return Asked(bus, address, RouteText(route));
    }));
  }
  if (const auto usual = UsualOnTheBus(routes); !usual.empty()) {
    parts.push_back(std::async(std::launch::async, [&routes, usual] { return BusList(routes, usual); }));
  }
  std::string text;
  for (auto& part : parts) text += part.get();
  return text;
}

std::string SerialDeviceList() {
  std::string text;
  for (const ListedDevice& device : ListedDevices()) {
    text += "  " + device.path + ": " + (device.description.empty() ? "" : device.description + ", ") +
            SerialDeviceState(device.path) + "\n";
    for (const std::string& name : device.lastingNames) text += "    " + name + "\n";
  }
  return text.empty() ? "  none\n" : text;
}

std::string ComList(const ComDevices& devices) {
  std::string text;
  for (std::size_t i = 0; i < devices.size(); ++i) {
    text += "  COM" + std::to_string(i + 1) + " (" + devices[i] + "): " + SerialDeviceState(devices[i]) + "\n";
  }
  return text;
}

}  // namespace

std::string DeviceList(const Options& options) {
  return "Serial devices\n" + SerialDeviceList() + "The Target's lines\n" + ComList(options.com) + "Instruments\n" +
         InstrumentList(options.gpib);
}

}  // namespace orvane
