// Roads in virtual time and nothing beside them, without a look at any clock:
//   roads_benchmark STATIONS ROADS [recorded]
//                             starts so many stations, one behind the other, and takes ROADS Targets through on each:
//                             callgrind counts what that takes, and the difference of two counts is what one
//                             station's start or one road takes; recorded: each run's record is gathered, and thrown
//                             away
//   roads_benchmark memory    how much more a standing station holds after 5,000 roads than after 50

#include <malloc.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/station.h"
#include "bench/virtual_bench.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "support/fake_desk.h"
#include "support/kept_records.h"
#include "support/memory_files.h"

namespace orvane::test {
namespace {

constexpr std::array kInstalledFiles{"TI532.epm", "RampTable.dat", "Cable.loss"};

std::map<std::string, std::string> InstalledContent() {
  std::map<std::string, std::string> content;
  for (const char* name : kInstalledFiles) {
    std::ifstream file(std::string(ORVANE_DATA_DIR "/").append(name), std::ios::binary);
    content[MemoryFiles().SystemPath(name)].assign(std::istreambuf_iterator<char>(file), {});
  }
  return content;
}

/// A station on the virtual bench, without the journal that tests keep of all that leaves it.
struct StandingStation {
  StandingStation(const std::map<std::string, std::string>& installed, bool records)
      : kept(records ? std::make_unique<KeptRecords>(PlainPorts()) : nullptr),
        station(kept ? kept->ports.Ports() : PlainPorts()) {
    files.content = installed;
    if (kept) kept->Follow(station);
    station.State().report.concluded.Connect([this](Verdict verdict) { concluded = verdict; });
    station.Start();
    StationPanels& panels = station.Panels();
    panels.main.Touch();
    op.Click(panels.main.cmdInstrumentInitialize);
    panels.baseBand.Touch();
    op.Click(panels.baseBand.supply.initialize);
    op.Click(panels.baseBand.load.initialize);
  }

  /// One more Target: both bands, EEPROM, charger.
  void TakeTargetThrough() {
    concluded = Verdict::None;
    op.Click(station.Panels().main.cmdTargetInitialize);
    if (concluded != Verdict::Pass || !station.State().report.AllComplete()) {
      throw std::runtime_error("A good unit did not pass.");
    }
    boxes.shown.clear();
    journal.Clear();
    if (!kept) return;
    kept->Settle();
    kept->records.clear();
    kept->grown.clear();
  }

  [[nodiscard]] StationPorts PlainPorts() { return {loop, bench.Serial(), bench.Bus(), files, boxes, dialogs}; }

  VirtualEventLoop loop;
  Journal journal;
  FakeBoxes boxes{journal};
  FakeDialogs dialogs;
  MemoryFiles files;
  bench::VirtualBench bench{loop};
  std::unique_ptr<KeptRecords> kept;
  Station station;
  Operator op{station.Nest()};
  Verdict concluded = Verdict::None;
};

void TakeRoads(int stations, int roads, bool records) {
  const auto installed = InstalledContent();
  for (int i = 0; i < stations; ++i) {
    StandingStation station(installed, records);
    for (int road = 0; road < roads; ++road) station.TakeTargetThrough();
  }
}

/// What is allocated: small blocks, and large ones, which have mappings of their own.
double HeldKilobytes() {
  const struct mallinfo2 held = ::mallinfo2();
  return static_cast<double>(held.uordblks + held.hblkhd) / 1024;
}

int MeasureMemory() {
  constexpr int kFirstRoads = 50;
  constexpr int kAllRoads = 5000;
  constexpr double kAllowed = 1024;
  StandingStation station(InstalledContent(), false);
  int road = 0;
  const auto heldAfter = [&](int roads) {
    for (; road < roads; ++road) station.TakeTargetThrough();
    return HeldKilobytes();
  };
  const double early = heldAfter(kFirstRoads);
  const double growth = heldAfter(kAllRoads) - early;
  std::printf("%-44s %9.0f KB  %7.0f allowed%s\n", "Held more after 5,000 roads than after 50", growth, kAllowed,
              growth > kAllowed ? "  MISSED" : "");
  return growth > kAllowed ? 1 : 0;
}

std::optional<int> CountIn(std::string_view text) {
  int count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(count) : std::nullopt;
}

}  // namespace
}  // namespace orvane::test

int main(int argc, char** argv) {
  using namespace orvane::test;
  if (argc == 2 && std::string_view(argv[1]) == "memory") return MeasureMemory();
  const bool isRecorded = argc == 4 && std::string_view(argv[3]) == "recorded";
  const bool isCount = argc == 3 || isRecorded;
  const auto stations = isCount ? CountIn(argv[1]) : std::nullopt;
  const auto roads = isCount ? CountIn(argv[2]) : std::nullopt;
  if (!stations || !roads) {
    std::fputs("roads_benchmark STATIONS ROADS [recorded] | roads_benchmark memory\n", stderr);
    return 64;
  }
  TakeRoads(*stations, *roads, isRecorded);
  return 0;
}
