#include "app/surroundings.h"

namespace orvane {
namespace {

std::string FaultText(const bench::Fault& fault) {
  std::string text(bench::RowOf(fault.kind).name);
  if (fault.from > 1) text += "@" + std::to_string(fault.from);
  return text;
}

std::string UnitText(const bench::BenchOptions& bench) {
  std::string text = "seed " + std::to_string(bench.seed);
  std::string_view head = bench.faults.size() > 1 ? ", faults " : ", fault ";
  for (const bench::Fault& fault : bench.faults) {
    text += head;
    text += FaultText(fault);
    head = ", ";
  }
  return text;
}

}  // namespace

std::string Surroundings::Details(std::string_view port) const {
  if (isVirtual) return unit;
  std::string text;
  for (std::size_t i = 0; i < devices.size(); ++i) {
    if (port == "COM" + std::to_string(i + 1)) text = std::string(port) + " " + devices[i] + ", ";
  }
  return text + instruments;
}

Surroundings SurroundingsOf(const Options& options) {
  Surroundings found{.devices = options.com, .instruments = "GPIB " + RouteText(options.gpib.bus)};
  for (const auto& [address, route] : options.gpib.instruments) {
    found.instruments += ", " + std::to_string(address) + " by " + RouteText(route);
  }
  if (!options.bench) return found;
  found.isVirtual = true;
  found.unit = UnitText(*options.bench);
  return found;
}

}  // namespace orvane
