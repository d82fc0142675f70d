/// How long an exchange with the Target takes beside what its bytes take on the line, how soon the next one follows,
/// and how long a whole road takes beside its wires: the station in this process, the virtual bench in another one.

#include <unistd.h>

#include <QCoreApplication>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "app/trace/trace_file.h"
#include "figures.h"
#include "wired_road.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

void MeasureExchanges(Table& table) {
  constexpr int kRoads = 5;
  std::vector<double> ratios;
  std::vector<double> gaps;
  for (int road = 0; road < kRoads; ++road) {
    const auto plain = DriveWiredRoad().Ratios();
    ratios.insert(ratios.end(), plain.begin(), plain.end());
    const auto between = DriveWiredRoad({.reading = 0ms}).gapsUs;
    gaps.insert(gaps.end(), between.begin(), between.end());
  }
  std::printf("%zu exchanges of %d roads\n", ratios.size(), kRoads);
  table.Add("an exchange over its wire time, median", Median(ratios), "", 1.03);
  table.Add("the same, nine in ten", Quantile(ratios, 0.9), "", 1.10);
  table.Add("from a reply to the next command, median", Median(gaps), "us", 100);
}

void MeasureRoads(Table& table) {
  constexpr int kRoads = 5;
  std::vector<double> ratios;
  WiredRoad road;
  for (int turn = 0; turn < kRoads; ++turn) {
    road = DriveWiredRoad({.reading = 50ms});
    ratios.push_back((road.seconds - road.paceSeconds) / (road.WireSeconds() + road.instrumentSeconds));
  }
  std::printf("a road: %.2f s, of them %.2f s on the wire, %.2f s for readings, %.2f s paces\n", road.seconds,
              road.WireSeconds(), road.instrumentSeconds, road.paceSeconds);
  table.Add("a road over its wire and readings, without paces", Median(ratios), "", 1.02);
}

/// What a trace costs, by the processor: the time of an exchange is the wire's.
void MeasureTrace(Table& table) {
  constexpr int kTurns = 5;
  const std::string trace =
      (std::filesystem::temp_directory_path() / ("orvane_bench_" + std::to_string(::getpid()))).string();
  std::vector<double> plain;
  std::vector<double> traced;
  std::vector<double> more;
  const auto each = [](const WiredRoad& road, std::vector<double>& took) {
    for (const WiredExchange& exchange : road.exchanges) took.push_back(exchange.tookUs);
    return 1e6 * road.processorSeconds / static_cast<double>(road.exchanges.size());
  };
  for (int turn = 0; turn < kTurns; ++turn) {
    const double without = each(DriveWiredRoad(), plain);
    more.push_back(each(DriveWiredRoad({.trace = trace}), traced) - without);
    for (const std::string& part : PartsOf(trace)) std::filesystem::remove(part);
  }
  std::printf("a trace takes %.1f us more of the processor for each exchange\n", Median(more));
  table.Add("an exchange with a trace over one without", Median(traced) / Median(plain), "", 1.02);
}

}  // namespace
}  // namespace orvane::test

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    orvane::test::Table table;
    orvane::test::MeasureExchanges(table);
    orvane::test::MeasureRoads(table);
    orvane::test::MeasureTrace(table);
    return table.Status();
  } catch (const std::exception& failure) {
    std::cerr << "exchange: " << failure.what() << std::endl;
    return 1;
  }
}
