// The texts of routes, faults and the virtual bench, as they stand on a command line. What is accepted must be within
// its range, be what a plain reading of a route says and, said in its own words, be accepted again as the same; all
// else is refused as a fault of the options.

#include <cmath>
#include <cstdlib>
#include <optional>

#include "app/route_text.h"
#include "bench/options.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

template <class Failure, class Parse>
auto Parsed(const Parse& parse) -> std::optional<decltype(parse())> {
  try {
    return parse();
  } catch (const Failure&) {
    return std::nullopt;
  }
}

bool IsPort(std::optional<int> port) { return !port || (*port >= 1 && *port <= 65535); }

bool IsSound(const NativeRoute&) { return true; }
bool IsSound(const PrologixTcpRoute& route) { return !route.host.empty() && IsPort(route.port); }
bool IsSound(const PrologixSerialRoute& route) { return route.device.starts_with('/'); }
bool IsSound(const GatewayRoute& route) { return !route.host.empty() && IsPort(route.port); }
bool IsSound(const TcpRoute& route) { return !route.host.empty() && IsPort(route.port); }
bool IsSound(const Vxi11Route& route) { return !route.host.empty() && IsPort(route.port) && !route.device.empty(); }

/// The whole text is that number.
bool Says(std::string_view text, int number) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return false;
  return std::strtod(std::string(text).c_str(), nullptr) == number;
}

/// `HOST[:PORT]` by a plain reading; only behind a bracket does a colon part the two where there is one.
void CheckPlace(std::string_view place, const std::string& host, std::optional<int> port) {
  const auto bracket = place.rfind(']');
  const auto colon = place.find_last_of(':');
  const bool hasPort = colon != place.npos && (bracket == place.npos || colon > bracket);
  std::string_view name = hasPort ? place.substr(0, colon) : place;
  if (name.size() > 2 && name.starts_with('[') && name.ends_with(']')) name = name.substr(1, name.size() - 2);
  Require(host == name, "another host");
  Require(port.has_value() == hasPort && (!port || Says(place.substr(colon + 1), *port)), "another port");
}

constexpr std::string_view kAdapter = "prologix:";
constexpr std::string_view kVxi11 = "vxi11:";
constexpr std::string_view kTcp = "tcp:";

/// Behind its kind.
void CheckPlaceOf(std::string_view, const NativeRoute&) {}
void CheckPlaceOf(std::string_view text, const PrologixTcpRoute& route) {
  const std::string_view place = text.substr(kAdapter.size());
  const bool usual = place.find(':', place.rfind(']') + 1) == place.npos;
  Require(!usual || route.port == PrologixTcpRoute{}.port, "another port than the usual one");
  CheckPlace(place, route.host, usual ? std::nullopt : std::optional(route.port));
}
void CheckPlaceOf(std::string_view text, const PrologixSerialRoute& route) {
  Require(text.substr(kAdapter.size()) == route.device, "another device");
}
void CheckPlaceOf(std::string_view text, const GatewayRoute& route) {
  CheckPlace(text.substr(kVxi11.size()), route.host, route.port);
}
void CheckPlaceOf(std::string_view text, const TcpRoute& route) {
  CheckPlace(text.substr(kTcp.size()), route.host, route.port);
}
void CheckPlaceOf(std::string_view text, const Vxi11Route& route) {
  const auto comma = text.find(',');
  CheckPlace(text.substr(kVxi11.size(), comma - kVxi11.size()), route.host, route.port);
  Require(comma == text.npos || route.device == text.substr(comma + 1), "another device");
}

void CheckBusRoute(const std::string& text) {
  const auto route = Parsed<OptionFault>([&] { return ParseBusRoute(text); });
  if (!route) return;
  Require(std::visit([](const auto& kind) { return IsSound(kind); }, *route), "a route to nowhere");
  std::visit([&](const auto& kind) { CheckPlaceOf(text, kind); }, *route);
  const std::string words = RouteText(*route);
  Require(RouteText(ParseBusRoute(words)) == words, "another route from its own words");
}

void CheckInstrumentRoute(const std::string& text) {
  const auto route = Parsed<OptionFault>([&] { return ParseInstrumentRoute(text); });
  if (!route) return;
  Require(route->first >= 0 && route->first <= 30, "no primary address");
  Require(std::visit([](const auto& kind) { return IsSound(kind); }, route->second), "a route to nowhere");
  const auto equals = text.find('=');
  Require(Says(std::string_view(text).substr(0, equals), route->first), "another address");
  std::visit([&](const auto& kind) { CheckPlaceOf(std::string_view(text).substr(equals + 1), kind); }, route->second);
  const std::string words = RouteText(route->second);
  const auto again = ParseInstrumentRoute(std::to_string(route->first) + "=" + words);
  Require(again.first == route->first && RouteText(again.second) == words, "another route from its own words");
}

bool IsSound(const bench::Fault& fault) {
  const auto& row = bench::RowOf(fault.kind);
  const bool usual = fault.value == row.value;
  return fault.from >= 1 && (usual || (fault.value >= row.lowest && fault.value <= row.highest)) &&
         (!fault.operation || row.counted == bench::Counted::kCommands);
}

void CheckFault(const std::string& text) {
  const auto fault = Parsed<bench::BenchOptionError>([&] { return bench::ParseFault(text); });
  Require(!fault || IsSound(*fault), "a fault that there is not");
}

void CheckBench(const std::string& text) {
  const auto options = Parsed<bench::BenchOptionError>([&] { return bench::ParseBenchOptions(text); });
  if (!options) return;
  Require(std::isfinite(options->cableLossDb) && std::isfinite(options->leadLossVolts), "a loss that is no number");
  for (const int address : {options->testSetAddress, options->supplyAddress, options->loadAddress}) {
    Require(address >= 0 && address <= 30, "no primary address");
  }
  for (const bench::Fault& fault : options->faults) Require(IsSound(fault), "a fault that there is not");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  CheckBusRoute(text);
  CheckInstrumentRoute(text);
  CheckFault(text);
  CheckBench(text);
  return 0;
}
