#include "program/faulty_road.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <thread>

#include "program/error_box.h"
#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int kSeed = 5;
/// The time-outs that the panels set: the short one where a wire is to run into it. A sound reply passes a dozen
/// processes' turns on a loaded machine, and takes no third of that.
constexpr auto kSpan = 3s;
constexpr auto kLongSpan = 10s;

const char* NameOf(Wrong wrong) {
  constexpr const char* kNames[] = {"nothing", "refuses", "silent", "deaf",   "single bytes",
                                    "surplus", "cut",     "late",   "flipped"};
  return kNames[static_cast<std::size_t>(wrong)];
}

const char* NameOf(At at) {
  constexpr const char* kNames[] = {"Initialize", "receive", "transmit", "charger"};
  return kNames[static_cast<std::size_t>(at)];
}

/// One road on which the wire to an instrument breaks.
class Road {
 public:
  Road(const RouteTo& route, const Row& row)
      : route_(route),
        row_(row),
        instrument_(InstrumentAt(route.address)),
        bench_(std::in_place, Bench("first")),
        wire_(*bench_, route.instruments, folder_.Path().string(), route.as),
        station_(Options()) {}

  void BreaksAndIsWholeAgain() {
    SetTimeOuts(TimesOut() ? "3s" : "10s");
    if (InRun()) station_.InitializeInstruments();
    wire_.Break({row_.wrong, row_.way, row_.text, row_.nth});
    const Json answer = ShowsErrorBox() ? MeetErrorBox() : ClickThrough();
    if (InRun()) JudgeRun();
    JudgeAnswer(answer);
    wire_.Mend();
    SetTimeOuts("10s");
    if (row_.fault != nullptr) TakeAnotherBench();
    if (errorWaits_) ExpectInitializeTakesTheErrorAway(station_, instrument_);
    ExpectInstrumentsReady(station_);
    if (InRun() && row_.fault == nullptr) {
      TakeAnotherBench();
      station_.InitializeInstruments();
    }
    TakesAWholeRoad();
  }

 private:
  [[nodiscard]] bool InRun() const { return row_.at != At::kInitialize; }
  [[nodiscard]] const char* Button() const {
    return InRun() ? "OrvaneMain.cmdTargetInitialize" : instrument_.initialize;
  }
  /// Whether the station tells of the fault.
  [[nodiscard]] bool IsTold() const { return row_.ends != Ends::kUnharmed && row_.ends != Ends::kBadUnit; }
  /// A failure of the test set ends what was clicked, one of the others is an event.
  [[nodiscard]] bool ShowsErrorBox() const { return IsTold() && route_.address != 1; }
  [[nodiscard]] bool TimesOut() const { return row_.ends == Ends::kTimeOut || row_.ends == Ends::kTimeOutLater; }

  [[nodiscard]] Arguments Bench(const std::string& store) const {
    Arguments arguments{"--seed", std::to_string(kSeed), "--store", folder_ / store};
    if (row_.fault != nullptr && store == "first") arguments.insert(arguments.end(), {"--fault", row_.fault});
    return arguments;
  }

  Arguments Options() {
    const bool one = std::string(route_.option) == "--instrument";
    Arguments options{
        "--com1", wire_.TargetPlace(), route_.option,
        (one ? std::to_string(route_.address) + "=" : "") + route_.ahead + wire_.Place() + route_.behind};
    for (const Instrument& other : kInstruments) {
      if (!route_.Alone() || other.address == route_.address) continue;
      options.insert(options.end(),
                     {"--instrument", std::to_string(other.address) + "=tcp:" + bench_->Place(other.place)});
    }
    return options;
  }

  void SetTimeOuts(const std::string& text) {
    for (const char* box : {"OrvaneMain.cboTimeOut", "frmBaseBand.cboPSTimeOut", "frmBaseBand.cboLoaderTimeOut"}) {
      ASSERT_EQ(station_.Set(box, "select", text)["result"]["text"], text);
    }
  }

  Json ClickThrough() {
    Json answer = station_.Click(Button());
    TakeTimes(answer.contains("error") ? answer["error"]["message"] : "");
    return answer;
  }

  Json MeetErrorBox() {
    Json answer = ClickIntoErrorBox(station_, Button(), {WhoFails(), row_.says, TimesOut()}, [&](const auto& line) {
      TakeTimes(line);
      JudgeTime(waited_);
    });
    errorWaits_ = station_.State(instrument_.ready) == true;
    return answer;
  }

  void TakeTimes(const std::string& told) {
    const auto now = Relay::Clock::now();
    const auto struckAt = wire_.StruckAt();
    EXPECT_TRUE(struckAt || row_.fault != nullptr) << told;
    // Of somebody deaf from the first moment on, no word is known.
    const auto begin = struckAt.value_or(wire_.SpokenAt());
    took_ = std::chrono::duration_cast<std::chrono::milliseconds>(now - begin);
    waited_ = std::chrono::duration_cast<std::chrono::milliseconds>(now - std::max(begin, wire_.SpokenAt()));
    std::printf("%d %-18s %-12s %-10s %5lld ms, waited %5lld ms  %s\n", route_.address, route_.name,
                row_.fault != nullptr ? row_.fault : NameOf(row_.wrong), NameOf(row_.at),
                static_cast<long long>(took_.count()), static_cast<long long>(waited_.count()), told.c_str());
  }

  void JudgeRun() {
    ASSERT_EQ(station_.Heard("verdict").size(), 1U);
    const Json& verdict = station_.Heard("verdict")[0];
    const bool good = row_.ends == Ends::kUnharmed;
    EXPECT_EQ(verdict["result"], good ? "PASS" : row_.ends == Ends::kBadUnit ? "FAIL" : row_.verdict) << verdict;
    EXPECT_EQ(verdict["complete"], good) << verdict;
    if (row_.at != At::kCharger) {
      EXPECT_EQ(ContentOf(folder_ / "first/eeprom.bin") == EmbeddedMemory(kSeed), good);
      return;
    }
    // What was measured on the air is saved by then.
    EXPECT_EQ(verdict["steps"].back()["name"], "charger");
    for (const Json& step : verdict["steps"]) EXPECT_EQ(step["complete"], good || step["name"] != "charger") << step;
    EXPECT_EQ(ContentOf(folder_ / "first/flash100.txt") == EmbeddedFlash(kSeed), verdict["result"] != "FAIL");
  }

  void JudgeAnswer(const Json& answer) {
    ASSERT_EQ(answer.contains("error"), IsTold() && !ShowsErrorBox()) << answer;
    if (answer.contains("error")) JudgeFailure(answer["error"]["message"]);
  }

  [[nodiscard]] std::string WhoFails() const {
    return "Instrument at address " + std::to_string(route_.address) + ", route " + route_.ahead + wire_.Place() +
           route_.calledBehind + ": ";
  }

  void JudgeFailure(const std::string& text) {
    const Json& box = station_.Await("box");
    EXPECT_EQ(box["text"], text);
    EXPECT_EQ(box["icon"], "stop");
    EXPECT_THAT(text, HasSubstr(row_.says));
    if (row_.ends == Ends::kNoNumber) return;
    EXPECT_THAT(text, StartsWith(WhoFails()));
    EXPECT_THAT(text, EndsWith(TimesOut() ? "\r\nibsta = &HC000, iberr = 6" : "\r\nibsta = &H8000, iberr = 2"));
    // Where nothing comes back sooner, the run goes on, however long that takes, to the question that has no answer.
    JudgeTime(row_.ends == Ends::kTimeOutLater ? waited_ : took_);
  }

  /// What ends at once waits for no time-out, what times out for its own and not for a longer one. A loaded machine
  /// may add all that lies between.
  void JudgeTime(std::chrono::milliseconds waited) const {
    EXPECT_LT(waited, TimesOut() ? kLongSpan : kLongSpan / 2);
    if (TimesOut()) {
      EXPECT_GT(took_, kSpan / 2);
    }
  }

  /// A unit that was on the air is warm, and its noise has gone on: one in its first state calibrates to the byte.
  void TakeAnotherBench() {
    Arguments arguments = Bench("second");
    for (const Instrument& other : kInstruments) {
      if (!route_.Alone() || other.address == route_.address) continue;
      arguments.insert(arguments.end(), {std::string("--") + other.place, bench_->Place(other.place)});
    }
    station_.Click("OrvaneMain.cmdTargetReset");
    bench_->Kill();
    bench_.reset();
    EmplaceBench(arguments);
    wire_.LeadTo(*bench_);
  }

  /// At the places that the first bench left; a client of another road may hold one of them for as long as it lasts.
  void EmplaceBench(const Arguments& arguments) {
    for (int tries = 100; !bench_; --tries) {
      try {
        bench_.emplace(arguments);
      } catch (const std::runtime_error&) {
        if (tries == 0) throw;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
      }
    }
  }

  void TakesAWholeRoad() {
    const std::size_t failures = station_.Heard("failure").size();
    const std::size_t boxes = station_.Heard("box").size();
    const Json answer = station_.Click("OrvaneMain.cmdTargetInitialize");
    EXPECT_TRUE(answer.contains("result")) << answer;
    EXPECT_EQ(station_.Heard("failure").size(), failures);
    EXPECT_EQ(station_.Heard("box").size(), boxes);
    ASSERT_FALSE(station_.Heard("verdict").empty());
    const Json& verdict = station_.Heard("verdict").back();
    EXPECT_EQ(verdict["result"], "PASS") << verdict;
    EXPECT_EQ(verdict["complete"], true) << verdict;
    const std::filesystem::path store = folder_ / (InRun() || row_.fault != nullptr ? "second" : "first");
    const std::string memory = ContentOf(store / "eeprom.bin");
    EXPECT_EQ(memory.size(), 1816U);
    EXPECT_TRUE(memory == EmbeddedMemory(kSeed));
    EXPECT_EQ(ContentOf(store / "flash100.txt"), EmbeddedFlash(kSeed));
  }

  const RouteTo& route_;
  const Row& row_;
  const Instrument& instrument_;
  TempFolder folder_;
  std::optional<WiredBench> bench_;
  Relay wire_;
  Station station_;
  std::chrono::milliseconds took_{};
  std::chrono::milliseconds waited_{};
  /// An error that the next Initialize ends with.
  bool errorWaits_ = false;
};

}  // namespace

void TakeRoads(const std::vector<FaultyRoad>& roads) {
  ASSERT_EQ(EmbeddedMemory(kSeed).size(), 1816U);
  std::vector<std::thread> threads;
  for (const FaultyRoad& road : roads) {
    threads.emplace_back([&route = road.route, &row = road.row] {
      SCOPED_TRACE(testing::Message() << route.address << ", " << route.name << ", "
                                      << (row.fault != nullptr ? row.fault : NameOf(row.wrong)) << ", "
                                      << NameOf(row.at));
      try {
        Road(route, row).BreaksAndIsWholeAgain();
      } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

void TakeRoads(const RouteTo& route, const std::vector<Row>& rows) {
  std::vector<FaultyRoad> roads;
  for (const Row& row : rows) roads.push_back({route, row});
  TakeRoads(roads);
}

}  // namespace orvane::test
