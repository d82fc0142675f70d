// Whole production roads and single exchanges in virtual time: what the station's own code costs.

#include <benchmark/benchmark.h>

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

/// One command line from the operator's box to its decoded reply, the virtual handset's share included.
void Exchange(benchmark::State& state, const char* line) {
  VirtualStation station(1);
  station.bench.Serial().setup.rThreshold = 1;
  station.bench.Serial().Open();
  TextBox& box = station.Panels().main.txtUserCommand;
  for (auto _ : state) {
    station.op.Click(box);
    station.op.Type(box, line);
    station.op.Key(box, 13);
    if (StatusOf(station.State().reply) != 0) {
      state.SkipWithError("The Target did not answer.");
      break;
    }
    station.journal.Clear();
  }
}
BENCHMARK_CAPTURE(Exchange, short_command, "rfpw 1 62");
BENCHMARK_CAPTURE(Exchange, ramp_table,
                  "ttw 3 0 1 3 5 7 9 11 12 13 14 15 15 15 15 15 15 15 15 15 15 15 14 13 12 11 9 7 5 3 1 0 0");
BENCHMARK_CAPTURE(Exchange, power_report, "sr 1 2");

}  // namespace
}  // namespace orvane::test

BENCHMARK_MAIN();
