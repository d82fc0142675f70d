#include "station/virtual_station.h"

#include <fstream>
#include <iterator>

namespace orvane::test {
const std::string& InstalledFile(const std::string& name) {
  static std::map<std::string, std::string> cache;
  std::string& content = cache[name];
  if (content.empty()) {
    std::ifstream file(std::string(ORVANE_DATA_DIR "/").append(name), std::ios::binary);
    content.assign(std::istreambuf_iterator<char>(file), {});
    if (content.empty()) throw std::runtime_error("The installed data file " + name + " was not made.");
  }
  return content;
}

bench::BenchOptions OptionsOf(std::uint64_t seed, const std::vector<std::string>& faults) {
  bench::BenchOptions options;
  options.seed = seed;
  for (const auto& fault : faults) options.faults.push_back(bench::ParseFault(fault));
  return options;
}

VirtualStation::VirtualStation(const bench::BenchOptions& options, const OtherFiles& others,
                               const StationWishes& wishes, const Around& put)
    : bench(loop, options), station(put ? put(PlainPorts(), around) : PlainPorts(), wishes), op(station.Nest()) {
  for (const char* name : {"TI532.epm", "RampTable.dat", "Cable.loss"}) {
    const auto other = others.find(std::string_view(name));
    if (other == others.end()) {
      files.content[files.SystemPath(name)] = InstalledFile(name);
    } else if (other->second) {
      files.content[files.SystemPath(name)] = *other->second;
    }
  }
  OrvaneMain& main = Panels().main;
  main.txtUserCommand.changed.Connect([this, &main] {
    if (!main.txtUserCommand.Text().empty()) journal.Add("Target: " + main.txtUserCommand.Text());
  });
  State().report.concluded.Connect([this](Verdict verdict) { verdict_ = verdict; });
  station.Start();
}

VirtualStation::VirtualStation(std::uint64_t seed, const std::vector<std::string>& faults)
    : VirtualStation(OptionsOf(seed, faults)) {}

VirtualStation::~VirtualStation() = default;

void VirtualStation::InitializeInstruments() {
  Panels().main.Touch();
  op.Click(Panels().main.cmdInstrumentInitialize);
  Panels().baseBand.Touch();
  op.Click(Panels().baseBand.supply.initialize);
  op.Click(Panels().baseBand.load.initialize);
}

std::optional<std::string> VirtualStation::InitializeTarget() { return op.Click(Panels().main.cmdTargetInitialize); }

std::optional<std::string> VirtualStation::TakeTargetThrough() {
  InitializeInstruments();
  return InitializeTarget();
}

std::string VirtualStation::Steps() {
  std::string text;
  for (const StepRecord& step : State().report.Steps()) {
    text += std::string(StepName(step.step)) + ": " + (step.complete ? "complete" : step.reason) + "\n";
  }
  return text;
}

}  // namespace orvane::test
