/// How long the station's pace is on this machine: the empty counting loop of the real event loop, at the count that
/// `txtSyncDelay` starts with.

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include "adapters/qt_event_loop.h"

namespace {

void Pace(benchmark::State& state) {
  orvane::QtEventLoop loop;
  for (auto _ : state) loop.Spin(state.range(0));
  state.counters["turn"] =
      benchmark::Counter(static_cast<double>(state.range(0)),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
// A pace, and the 800 of them that a connection of the Target begins with.
BENCHMARK(Pace)->Arg(20'000)->Arg(800 * 20'000)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
