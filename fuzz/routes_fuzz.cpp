// The texts of routes, faults and the virtual bench, as they stand on a command line. What is accepted must be within
// its range and, said in its own words, be accepted again as the same; all else is refused as a fault of the options.

#include <cmath>
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

void CheckBusRoute(const std::string& text) {
  const auto route = Parsed<OptionFault>([&] { return ParseBusRoute(text); });
  if (!route) return;
  Require(std::visit([](const auto& kind) { return IsSound(kind); }, *route), "a route to nowhere");
  const std::string words = RouteText(*route);
  Require(RouteText(ParseBusRoute(words)) == words, "another route from its own words");
}

void CheckInstrumentRoute(const std::string& text) {
  const auto route = Parsed<OptionFault>([&] { return ParseInstrumentRoute(text); });
  if (!route) return;
  Require(route->first >= 0 && route->first <= 30, "no primary address");
  Require(std::visit([](const auto& kind) { return IsSound(kind); }, route->second), "a route to nowhere");
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
