// Over every named fault of the bench, at every step of the road where it can strike: never a PASS with all steps
// complete, never a run without end, and a station that is ready for the next click.

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <set>

#include "station/virtual_station.h"

namespace orvane::bench {
/// A fault's name in the test's output.
inline void PrintTo(const FaultRow& row, std::ostream* out) { *out << row.name; }
}  // namespace orvane::bench

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// No click of this road takes longer, whatever the Target and the instruments do or stop doing. The longest is a
/// Target that falls silent in a GSM level: its search sees the same power until the DAC limit, 2.5 s a pass.
constexpr TimePoint kClickBound = 20min;

/// Faults that cannot strike on the road.
const std::set<std::string_view> kBesideTheRoad{
    "charger",        // asked for by zero calibration and CV DAC search alone
    "supply-silent",  // the supply is asked at its own Initialize alone
    "load-silent",    // the road uses no load
    "load-absent",
};

/// The last command at which a defect of the unit can still show.
const std::map<std::string_view, std::string> kLastCommand{{"pa-dead", "rfe 2"},       {"pa-weak", "txpw 4"},
                                                           {"phase", "rfe 2"},         {"receiver", "rfe 1"},
                                                           {"receiver-dead", "rfe 1"}, {"battery", "mpr 30"}};

/// Events of a good road that a fault may strike at, counted from 1, both ends inclusive.
struct Span {
  unsigned first;
  unsigned last;
};

/// Number of the last of the lines that begins so.
unsigned LastOf(const std::vector<std::string>& lines, std::string_view beginning) {
  for (std::size_t i = lines.size(); i > 0; --i) {
    if (lines[i - 1].starts_with(beginning)) return static_cast<unsigned>(i);
  }
  throw std::runtime_error("The road has no line " + std::string(beginning));
}

unsigned CountOf(const std::vector<std::string>& lines, bool (*counts)(const std::string&)) {
  return static_cast<unsigned>(std::count_if(lines.begin(), lines.end(), counts));
}

Span SpanOf(const bench::FaultRow& row) {
  static VirtualStation road(1);
  if (road.Concluded() == Verdict::None) road.TakeTargetThrough();
  const auto commands = road.journal.Commands();
  const auto testSet = road.journal.Of("1: ");
  switch (row.counted) {
    case bench::Counted::kCommands: {
      // From the first command of the receive step, behind "ti" and "tms 1", to the last one of the charger step.
      const auto last = kLastCommand.find(row.name);
      return {3, LastOf(commands, last == kLastCommand.end() ? "tms 4" : last->second)};
    }
    case bench::Counted::kTestSetLines:
      return {1, LastOf(testSet, "FETCH:PFERROR:ALL?")};
    case bench::Counted::kTestSetQueries:
      return {1, CountOf(testSet, [](const std::string& line) { return line.ends_with('?'); })};
    case bench::Counted::kTestSetReadings:
      return {1, CountOf(testSet, [](const std::string& line) { return line.starts_with("FETC"); })};
    case bench::Counted::kSupplyLines:
      return {1, static_cast<unsigned>(road.journal.Of("2: ").size())};
    case bench::Counted::kLoadLines:
      break;
  }
  return {1, 1};
}

/// Both ends, and at most that many places between them.
std::vector<unsigned> Places(Span span, unsigned most) {
  std::vector<unsigned> places;
  const unsigned stride = std::max(1U, (span.last - span.first) / most);
  for (unsigned n = span.first; n < span.last; n += stride) places.push_back(n);
  places.push_back(span.last);
  return places;
}

class EveryFault : public testing::TestWithParam<bench::FaultRow> {};

void ExpectReady(VirtualStation& station) {
  EXPECT_TRUE(station.station.Nest().Idle());
  EXPECT_TRUE(station.State().reply.ReplyDone);
  EXPECT_TRUE(station.Panels().autoCal.cmdAllCalStart.Enabled());
  EXPECT_TRUE(station.Panels().baseBand.cmdChargerAutoCal.Enabled());
}

void ExpectNextTargetPasses(VirtualStation& station) {
  if (station.bench.Serial().PortOpen()) station.op.Click(station.Panels().main.cmdTargetReset);
  EXPECT_EQ(station.InitializeTarget(), std::nullopt);
  EXPECT_EQ(station.Concluded(), Verdict::Pass);
  EXPECT_TRUE(station.State().report.AllComplete()) << station.Steps();
}

TEST_P(EveryFault, NeverLeavesACalibratedUnitBehindAndAlwaysAStationThatIsReady) {
  const bench::FaultRow& row = GetParam();
  if (kBesideTheRoad.contains(row.name)) GTEST_SKIP() << "cannot strike on the road";
  for (const unsigned n : Places(SpanOf(row), 40)) {
    const std::string fault = std::string(row.name) + "@" + std::to_string(n);
    SCOPED_TRACE(fault);
    VirtualStation station(1, {fault});
    station.InitializeInstruments();
    const TimePoint begin = station.loop.Now();
    station.InitializeTarget();
    EXPECT_LT(station.loop.Now() - begin, kClickBound);
    EXPECT_FALSE(station.Concluded() == Verdict::Pass && station.State().report.AllComplete()) << station.Steps();
    ExpectReady(station);
    if (row.lasts == bench::Lasts::kOnce) ExpectNextTargetPasses(station);
  }
}

std::string NameOf(const testing::TestParamInfo<bench::FaultRow>& fault) {
  std::string name(fault.param.name);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Bench, EveryFault, testing::ValuesIn(bench::FaultTable().begin(), bench::FaultTable().end()),
                         NameOf);

}  // namespace
}  // namespace orvane::test
