#include "app/device_list.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <iterator>
#include <nlohmann/json.hpp>
#include <vector>

#include "adapters/gpib/native_gpib.h"
#include "base/text.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::ordered_json;

/// Where the test set, the supply and the load stand as the panels come up.
constexpr std::array kUsualAddresses{1, 2, 5};
constexpr auto kAnswerTime = 1s;
/// An adapter that starts afresh when its device is opened hears nothing for a while.
constexpr auto kRestartTime = 3s;
constexpr std::size_t kLongestAnswer = 200;

using Listed = std::vector<ListedInstrument>;

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

ListedInstrument Asked(GpibBus& bus, int address, const std::string& route, TimePoint takenWithin = kAnswerTime) {
  ListedInstrument listed{address, route};
  try {
    const auto session = bus.Open({0, static_cast<Integer>(address), 0});
    session->Write("*IDN?", takenWithin);
    const std::string reply = session->Read(kLongestAnswer, kAnswerTime);
    BackToLocal(*session);
    listed.answer = Readable(reply);
  } catch (const GpibError& error) {
    listed.words = error.Text();
  }
  return listed;
}

void Append(Listed& to, Listed more) { std::move(more.begin(), more.end(), std::back_inserter(to)); }

/// The usual addresses that have no route of their own.
std::vector<int> UsualOnTheBus(const GpibRoutes& routes) {
  std::vector<int> addresses;
  for (const int address : kUsualAddresses) {
    if (!routes.instruments.contains(address)) addresses.push_back(address);
  }
  return addresses;
}

/// Everybody who listens, of whom those at a usual address are asked.
Listed NativeBusList(const GpibRoutes& routes, const std::vector<int>& usual) {
  const std::string route = RouteText(routes.bus);
  std::vector<int> listeners;
  try {
    listeners = NativeGpib().Listeners(0);
  } catch (const GpibError& error) {
    return {{std::nullopt, route, std::nullopt, error.Text()}};
  }
  RoutedGpibBus bus({routes.bus, {}});
  Listed listed;
  for (const int address : listeners) {
    const bool isUsual = std::find(usual.begin(), usual.end(), address) != usual.end();
    listed.push_back(isUsual ? Asked(bus, address, route)
                             : ListedInstrument{address, route, std::nullopt, "listens, and was not asked"});
  }
  if (!listed.empty()) return listed;
  return {{std::nullopt, route, std::nullopt, "Route " + route + ": nobody listens at the addresses 0 to 30."}};
}

/// One wire: one instrument at a time.
Listed BusList(const GpibRoutes& routes, const std::vector<int>& usual) {
  if (std::holds_alternative<NativeRoute>(routes.bus)) return NativeBusList(routes, usual);
  const bool mayRestart = std::holds_alternative<PrologixSerialRoute>(routes.bus);
  RoutedGpibBus bus({routes.bus, {}});
  // As long as it is there the adapter's connection stays, and is made once for all.
  const auto held = bus.Open({0, kUsualAddresses.front(), 0});
  Listed listed;
  for (const int address : usual) {
    listed.push_back(Asked(bus, address, RouteText(routes.bus), mayRestart ? kRestartTime : kAnswerTime));
  }
  return listed;
}

Listed InstrumentList(const GpibRoutes& routes) {
  // Routes know nothing of each other and wait side by side.
  std::vector<std::future<Listed>> parts;
  for (const auto& [address, route] : routes.instruments) {
    parts.push_back(std::async(std::launch::async, [address = address, route = route] {
      RoutedGpibBus bus({NativeRoute{}, {{address, route}}});
      Listed one{Asked(bus, address, RouteText(route))};
      one.front().isNamed = true;
      return one;
    }));
  }
  if (const auto usual = UsualOnTheBus(routes); !usual.empty()) {
    parts.push_back(std::async(std::launch::async, [&routes, usual] { return BusList(routes, usual); }));
  }
  Listed listed;
  for (auto& part : parts) Append(listed, part.get());
  return listed;
}

/// The words of an instrument that failed name it already.
std::string LineOf(const ListedInstrument& listed) {
  const bool isNotAsked = listed.address && listed.words.starts_with("listens");
  if (!listed.answer && !isNotAsked) return "  " + listed.words + "\n";
  return "  Instrument at address " + std::to_string(*listed.address) + ", route " + listed.route + ": " +
         (listed.answer ? *listed.answer : listed.words) + "\n";
}

std::string LinesOf(const DeviceList::SerialDevice& listed) {
  const ListedDevice& device = listed.device;
  std::string text =
      "  " + device.path + ": " + (device.description.empty() ? "" : device.description + ", ") + listed.state + "\n";
  for (const std::string& name : device.lastingNames) text += "    " + name + "\n";
  return text;
}

Json TextOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

}  // namespace

bool DeviceList::AllNamedAnswer() const {
  return std::none_of(instruments.begin(), instruments.end(),
                      [](const ListedInstrument& each) { return each.isNamed && !each.answer; });
}

std::string DeviceList::Text() const {
  std::string text = "Serial devices\n";
  for (const SerialDevice& each : serialDevices) text += LinesOf(each);
  if (serialDevices.empty()) text += "  none\n";
  text += "The Target's lines\n";
  for (std::size_t i = 0; i < lines.size(); ++i) {
    text += "  COM" + std::to_string(i + 1) + " (" + lines[i].device + "): " + lines[i].state + "\n";
  }
  text += "Instruments\n";
  for (const ListedInstrument& each : instruments) text += LineOf(each);
  return text;
}

std::string DeviceList::JsonText() const {
  Json serial = Json::array();
  for (const auto& [device, state] : serialDevices) {
    serial.push_back({{"device", device.path},
                      {"description", TextOrNull(device.description)},
                      {"names", device.lastingNames},
                      {"state", state}});
  }
  Json target = Json::array();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    target.push_back(
        {{"port", "COM" + std::to_string(i + 1)}, {"device", lines[i].device}, {"state", lines[i].state}});
  }
  Json answers = Json::array();
  for (const ListedInstrument& each : instruments) {
    answers.push_back({{"address", each.address ? Json(*each.address) : Json()},
                       {"route", each.route},
                       {"answer", each.answer ? Json(*each.answer) : Json()},
                       {"fault", TextOrNull(each.words)}});
  }
  return Json{{"serial", serial}, {"lines", target}, {"instruments", answers}}.dump(2, ' ', false,
                                                                                    Json::error_handler_t::replace) +
         "\n";
}

DeviceList ListDevices(const Options& options) {
  DeviceList list;
  for (ListedDevice& device : ListedDevices()) {
    std::string state = SerialDeviceState(device.path);
    list.serialDevices.push_back({std::move(device), std::move(state)});
  }
  for (const std::string& device : options.com) list.lines.push_back({device, SerialDeviceState(device)});
  list.instruments = InstrumentList(options.gpib);
  return list;
}

}  // namespace orvane
