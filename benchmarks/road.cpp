// Whole production roads and single exchanges in virtual time: what the station's own code costs.

#include <benchmark/benchmark.h>

#include <string_view>
#include <vector>

#include "station/virtual_station.h"

namespace orvane::test {
namespace {

/// A station from its start to the verdict: both bands, save to EEPROM and file, charger. Another unit each time.
void WholeRoad(benchmark::State& state) {
  std::uint64_t seed = 0;
  long commands = 0;
  for (auto _ : state) {
    VirtualStation station(++seed);
    station.InitializeInstruments();
    station.Panels().autoCal.Touch();
    station.op.Select(station.Panels().autoCal.optSaveModeEEPROMFile);
    station.dialogs.answers.emplace_back("/unit.epm");
    station.InitializeTarget();
    if (station.Concluded() != Verdict::Pass || !station.State().report.AllComplete() ||
        station.files.content["/unit.epm"].empty()) {
      state.SkipWithError("A good unit did not pass.");
      break;
    }
    commands += station.State().tally.commands;
  }
  state.counters["roads/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["commands"] = benchmark::Counter(static_cast<double>(commands), benchmark::Counter::kAvgIterations);
}
BENCHMARK(WholeRoad)->Unit(benchmark::kMillisecond);

/// One more Target on a station that stands: what a line on a bench does all day.
void NextTarget(benchmark::State& state) {
  VirtualStation station(1);
  station.InitializeInstruments();
  for (auto _ : state) {
    station.InitializeTarget();
    if (station.Concluded() != Verdict::Pass) {
      state.SkipWithError("A good unit did not pass.");
      break;
    }
  }
}
BENCHMARK(NextTarget)->Unit(benchmark::kMillisecond);

/// One command line from the operator's box to its decoded reply, the virtual handset's share included. The others go
/// ahead of all, to bring the handset where it can answer.
void Exchange(benchmark::State& state, const char* line, const std::vector<const char*>& ahead = {}) {
  VirtualStation station(1);
  station.bench.Serial().setup.rThreshold = 1;
  station.bench.Serial().Open();
  TextBox& box = station.Panels().main.txtUserCommand;
  const auto send = [&](const char* text) {
    station.op.Click(box);
    station.op.Type(box, text);
    const auto failure = station.op.Key(box, 13);
    return !failure && StatusOf(station.State().reply) == 0 && station.State().reply.ReplyDone;
  };
  for (const char* const first : ahead) send(first);
  const long reports = station.State().reply.powerReports;
  for (auto _ : state) {
    if (!send(line)) {
      state.SkipWithError("The Target did not answer.");
      break;
    }
    station.journal.Clear();
  }
  const bool reported = station.State().reply.powerReports > reports;
  if (reported != std::string_view(line).starts_with("sr ")) state.SkipWithError("A report is no report.");
}
BENCHMARK_CAPTURE(Exchange, short_command, "rfpw 1 62");
BENCHMARK_CAPTURE(Exchange, ramp_table,
                  "ttw 3 0 1 3 5 7 9 11 12 13 14 15 15 15 15 15 15 15 15 15 15 15 14 13 12 11 9 7 5 3 1 0 0");
// A channel and a measurement, or there is nothing to report.
BENCHMARK_CAPTURE(Exchange, power_report, "sr 1 2", {"rfpw 1 62", "rfe 1"});

}  // namespace
}  // namespace orvane::test

BENCHMARK_MAIN();
