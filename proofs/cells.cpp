#include "cells.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <numeric>

#include "stand.h"

namespace orvane::proofs {
namespace {

using namespace std::chrono_literals;

/// No click takes longer, whatever strikes. The longest is a Target that falls silent in a GSM level: its search sees
/// the same power for up to 1100 passes, 2.5 s each.
constexpr TimePoint kClickBound = 50min;

constexpr std::uint64_t kStruckSeed = 1;
constexpr std::uint64_t kNextSeed = 2;

struct HarmOf {
  Harm harm;
  unsigned value = 0;
};

/// What can become of a byte. A delay of 30 ms is within the gathering of a reply, 100 ms is not, 2.6 s is longer
/// than the wait.
constexpr std::array kHarms{HarmOf{Harm::Lost},          HarmOf{Harm::Doubled},       HarmOf{Harm::Exchanged},
                            HarmOf{Harm::Flipped, 0x01}, HarmOf{Harm::Flipped, 0x02}, HarmOf{Harm::Flipped, 0x04},
                            HarmOf{Harm::Flipped, 0x08}, HarmOf{Harm::Flipped, 0x10}, HarmOf{Harm::Flipped, 0x20},
                            HarmOf{Harm::Flipped, 0x40}, HarmOf{Harm::Flipped, 0x80}, HarmOf{Harm::Flipped, 0xFF},
                            HarmOf{Harm::Delayed, 30},   HarmOf{Harm::Delayed, 100},  HarmOf{Harm::Delayed, 2600}};

/// Values of a fault beside its usual one.
const std::map<std::string_view, std::vector<std::string>> kValues{{"status", {"", "/2", "/16", "/127"}},
                                                                   {"short", {"/0", "/1", "/2", "", "/9", "/14"}},
                                                                   {"garbage", {"/1", "", "/2", "/200"}},
                                                                   {"late", {"/30", "/100", "/2450", "", "/6000"}},
                                                                   {"testset-high", {"/-60", "", "/40", "/1000"}}};

/// The last command at which a defect of the unit can still show.
const std::map<std::string_view, std::string> kLastCommand{{"pa-dead", "rfe 2"},       {"pa-weak", "txpw 4"},
                                                           {"phase", "rfe 2"},         {"receiver", "rfe 1"},
                                                           {"receiver-dead", "rfe 1"}, {"battery", "mpr 30"}};

unsigned LastOf(const std::vector<std::string>& commands, std::string_view beginning) {
  const auto last = std::find_if(commands.rbegin(), commands.rend(),
                                 [&](const std::string& command) { return command.starts_with(beginning); });
  return static_cast<unsigned>(commands.rend() - last);
}

unsigned PlacesOf(const bench::FaultRow& row, const RoadMeasure& road) {
  switch (row.counted) {
    case bench::Counted::kCommands: {
      const auto last = kLastCommand.find(row.name);
      return last == kLastCommand.end() ? static_cast<unsigned>(road.commands.size())
                                        : LastOf(road.commands, last->second);
    }
    case bench::Counted::kTestSetLines:
      return road.testSetLines;
    case bench::Counted::kTestSetQueries:
      return road.testSetQueries;
    case bench::Counted::kTestSetReadings:
      return road.testSetReadings;
    case bench::Counted::kSupplyLines:
      return road.supplyLines;
    case bench::Counted::kLoadLines:
      return 2;
  }
  return 0;
}

/// The N-th place of `count`, in leaps of about the golden section of it, so that no two parts of it are alike.
std::uint64_t Leaping(std::uint64_t n, std::uint64_t count) {
  auto leap = static_cast<std::uint64_t>(static_cast<double>(count) * 0.6180339887) | 1U;
  while (std::gcd(leap, count) != 1) leap += 2;
  return n % count * leap % count;
}

Damage ByteCell(Way way, std::uint64_t place) {
  const HarmOf& harm = kHarms[place % kHarms.size()];
  return {way, place / kHarms.size(), harm.harm, harm.value};
}

/// Takes the unit in the fixture through, and looks at what came of it.
void Judge(Stand& stand, const std::string& which, Outcome& outcome) {
  const TimePoint begin = stand.loop.Now();
  (void)stand.TakeThrough();
  ++outcome.figures["roads"];
  if (stand.loop.Now() - begin > kClickBound) outcome.findings.push_back(which + ": the click took too long.");
  if (const std::string why = stand.Unready(); !why.empty()) outcome.findings.push_back(which + ": " + why + ".");
  if (!stand.PassedComplete()) return;
  ++outcome.figures["complete"];
  const std::vector<std::string> objections = Audit(stand.ToAudit());
  if (objections.empty()) return;
  if (stand.line.SwappedWithinAFrame()) {
    ++outcome.figures["swaps-that-no-checksum-sees"];
    return;
  }
  outcome.findings.push_back(
      which + ": a complete PASS that is none: " + objections.front() +
      (objections.size() > 1 ? " (" + std::to_string(objections.size()) + " objections)" : ""));
}

}  // namespace

RoadMeasure MeasureRoad() {
  RoadMeasure road;
  Stand stand;
  auto& box = stand.Panels().main.txtUserCommand;
  bench::BenchOptions unit;
  unit.seed = kStruckSeed;
  stand.bus.counts.clear();
  stand.Insert(unit, true);
  box.changed.Connect([&] {
    if (!box.Text().empty()) road.commands.push_back(box.Text());
  });
  stand.TakeThrough();
  if (!stand.PassedComplete()) throw std::runtime_error("A good unit does not pass: " + stand.Steps());
  road.testSetLines = stand.bus.counts[1].lines;
  road.testSetQueries = stand.bus.counts[1].queries;
  road.testSetReadings = stand.bus.counts[1].readings;
  road.supplyLines = stand.bus.counts[2].lines;
  road.bytesToTarget = stand.line.Count(Way::ToTarget);
  road.bytesToStation = stand.line.Count(Way::ToStation);
  return road;
}

std::string TextOf(const Cell& cell) { return cell.damage ? TextOf(*cell.damage) : cell.fault; }

Cell CellOf(std::string_view text) {
  if (const auto damage = DamageOf(text)) return {{}, damage};
  (void)bench::ParseFault(text);
  return {std::string(text), {}};
}

Cells::Cells(const RoadMeasure& road)
    : replyBytes_(road.bytesToStation * kHarms.size()), commandBytes_(road.bytesToTarget * kHarms.size()) {
  for (const bench::FaultRow& row : bench::FaultTable()) {
    const auto values = kValues.find(row.name);
    const unsigned places = PlacesOf(row, road);
    for (unsigned n = 1; n <= places; ++n) {
      const std::string fault = std::string(row.name) + "@" + std::to_string(n);
      if (values == kValues.end()) {
        faults_.push_back(fault);
        continue;
      }
      for (const std::string& value : values->second) faults_.push_back(fault + value);
    }
  }
}

Cell Cells::At(std::uint64_t number) const {
  if (number < faults_.size()) return {faults_[Leaping(number, faults_.size())], {}};
  number -= faults_.size();
  if (number < replyBytes_) return {{}, ByteCell(Way::ToStation, Leaping(number, replyBytes_))};
  return {{}, ByteCell(Way::ToTarget, Leaping(number - replyBytes_, commandBytes_))};
}

Outcome RunCell(const Cell& cell) {
  Outcome outcome;
  Stand stand;
  bench::BenchOptions struck;
  struck.seed = kStruckSeed;
  if (!cell.fault.empty()) struck.faults.push_back(bench::ParseFault(cell.fault));
  stand.Insert(struck, true);
  stand.line.Strike(cell.damage);
  Judge(stand, "the struck unit", outcome);
  if (cell.damage && !stand.line.HasStruck()) outcome.findings.emplace_back("the cell never struck");

  stand.LoadTablesAgainWhereTold();
  bench::BenchOptions next;
  next.seed = kNextSeed;
  stand.Insert(next, !cell.fault.empty());
  Judge(stand, "the next unit", outcome);
  if (!stand.PassedComplete()) outcome.findings.push_back("the next unit does not pass: " + stand.Steps());
  return outcome;
}

}  // namespace orvane::proofs
