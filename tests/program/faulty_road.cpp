#include "program/faulty_road.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <optional>
#include <thread>

#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int kSeed = 5;
/// The time-out that the panels set. A sound reply takes far less, however loaded the machine.
constexpr auto kSpan = 1000ms;
/// What a loaded machine may add to it.
constexpr auto kSlack = 2000ms;

const char* NameOf(Wrong wrong) {
  constexpr const char* kNames[] = {"nothing", "refuses", "silent", "deaf",   "single bytes",
                                    "surplus", "cut",     "late",   "flipped"};
  return kNames[static_cast<std::size_t>(wrong)];
}

const char* NameOf(At at) {
  constexpr const char* kNames[] = {"Initialize", "receive", "transmit"};
  return kNames[static_cast<std::size_t>(at)];
}

/// One road on which the wire to the test set breaks.
class Road {
 public:
  Road(const RouteToTestSet& route, const Row& row)
      : route_(route),
        row_(row),
        bench_(std::in_place, Bench("first")),
        wire_(*bench_, route.instruments, folder_.Path().string(), route.as),
        station_(Options()) {}

  void BreaksAndIsWholeAgain() {
    SetTimeOuts("1s");
    if (row_.at != At::kInitialize) station_.InitializeInstruments();
    wire_.Break({row_.wrong, row_.way, row_.text, row_.nth});
    const Json answer = station_.Click(row_.at == At::kInitialize ? "OrvaneMain.cmdInstrumentInitialize"
                                                                  : "OrvaneMain.cmdTargetInitialize");
    const auto end = Relay::Clock::now();
    const auto struckAt = wire_.StruckAt();
    ASSERT_TRUE(struckAt) << answer;
    took_ = std::chrono::duration_cast<std::chrono::milliseconds>(end - *struckAt);
    waited_ = std::chrono::duration_cast<std::chrono::milliseconds>(end - wire_.SpokenAt());
    JudgeEnd(answer);
    wire_.Mend();
    SetTimeOuts("10s");
    TakesUpTheSameInstruments();
    if (row_.at != At::kInitialize) TakeAnotherBench();
    TakesAWholeRoad();
  }

 private:
  [[nodiscard]] Arguments Bench(const std::string& store) const {
    return {"--seed", std::to_string(kSeed), "--store", folder_ / store};
  }

  Arguments Options() {
    Arguments options{"--com1", wire_.TargetPlace(), route_.option, route_.ahead + wire_.Place() + route_.behind};
    if (std::string(route_.option) == "--instrument") {
      for (const auto& [address, what] : {std::pair("2", "supply"), std::pair("5", "load")}) {
        options.insert(options.end(), {"--instrument", std::string(address) + "=tcp:" + bench_->Place(what)});
      }
    }
    return options;
  }

  void SetTimeOuts(const std::string& text) {
    for (const char* box : {"OrvaneMain.cboTimeOut", "frmBaseBand.cboPSTimeOut", "frmBaseBand.cboLoaderTimeOut"}) {
      ASSERT_EQ(station_.Set(box, "select", text)["result"]["text"], text);
    }
  }

  void JudgeEnd(const Json& answer) {
    const bool inRun = row_.at != At::kInitialize;
    const std::string text = answer.contains("error") ? answer["error"]["message"] : "";
    std::printf("%-18s %-12s %-10s %5lld ms, waited %5lld ms  %s\n", route_.name, NameOf(row_.wrong), NameOf(row_.at),
                static_cast<long long>(took_.count()), static_cast<long long>(waited_.count()), text.c_str());
    if (inRun) {
      ASSERT_EQ(station_.Heard("verdict").size(), 1U);
      const Json& verdict = station_.Heard("verdict")[0];
      const bool good = row_.ends == Ends::kUnharmed;
      EXPECT_EQ(verdict["result"], good ? "PASS" : row_.ends == Ends::kBadUnit ? "FAIL" : "NONE") << verdict;
      EXPECT_EQ(verdict["complete"], good) << verdict;
      EXPECT_EQ(ContentOf(folder_ / "first/eeprom.bin") == EmbeddedMemory(kSeed), good);
    }
    const bool fails = row_.ends != Ends::kUnharmed && row_.ends != Ends::kBadUnit;
    ASSERT_EQ(answer.contains("error"), fails) << answer;
    if (fails) JudgeFailure(answer["error"]["message"]);
  }

  void JudgeFailure(const std::string& text) {
    const Json& box = station_.Await("box");
    EXPECT_EQ(box["text"], text);
    EXPECT_EQ(box["icon"], "stop");
    EXPECT_THAT(text, HasSubstr(row_.says));
    if (row_.ends == Ends::kNoNumber) return;
    const std::string kind = std::string(route_.ahead).substr(std::string(route_.ahead).find('=') + 1);
    EXPECT_THAT(text,
                StartsWith("Instrument at address 1, route " + kind + wire_.Place() + route_.calledBehind + ": "));
    const bool timeOut = row_.ends != Ends::kAtOnce;
    EXPECT_THAT(text, EndsWith(timeOut ? "\r\nibsta = &HC000, iberr = 6" : "\r\nibsta = &H8000, iberr = 2"));
    // Where nothing comes back sooner, the run goes on, however long that takes, to the question that has no answer.
    const auto waited = row_.ends == Ends::kTimeOutLater ? waited_ : took_;
    EXPECT_LT(waited, (timeOut ? kSpan + kSpan / 10 : 0ms) + kSlack);
    if (timeOut) {
      EXPECT_GT(took_, kSpan / 2);
    }
  }

  void TakesUpTheSameInstruments() {
    station_.Set("OrvaneMain.txtResults", "text", "");
    station_.InitializeInstruments();
    EXPECT_EQ(station_.State("TestSetReady"), true);
    EXPECT_EQ(station_.State("PSReady"), true);
    EXPECT_EQ(station_.State("LoaderReady"), true);
    EXPECT_THAT(std::string(station_.Get("OrvaneMain.txtResults")["text"]),
                AllOf(HasSubstr("ORVANE,VIRTUAL TEST SET,0,1.0"), HasSubstr("ORVANE,VIRTUAL SUPPLY,0,1.0"),
                      HasSubstr("ORVANE,VIRTUAL LOAD,0,1.0")));
  }

  /// A unit that was on the air is warm, and its noise has gone on: one in its first state calibrates to the byte.
  void TakeAnotherBench() {
    Arguments arguments = Bench("second");
    for (const char* what : {"supply", "load"}) {
      arguments.insert(arguments.end(), {std::string("--") + what, bench_->Place(what)});
    }
    station_.Click("OrvaneMain.cmdTargetReset");
    bench_->Kill();
    bench_.reset();
    EmplaceBench(arguments);
    wire_.LeadTo(*bench_);
    station_.InitializeInstruments();
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
    const Json answer = station_.Click("OrvaneMain.cmdTargetInitialize");
    EXPECT_TRUE(answer.contains("result")) << answer;
    EXPECT_EQ(station_.Heard("failure").size(), failures);
    ASSERT_FALSE(station_.Heard("verdict").empty());
    const Json& verdict = station_.Heard("verdict").back();
    EXPECT_EQ(verdict["result"], "PASS") << verdict;
    EXPECT_EQ(verdict["complete"], true) << verdict;
    const std::string memory = ContentOf(folder_ / (row_.at == At::kInitialize ? "first" : "second") + "/eeprom.bin");
    EXPECT_EQ(memory.size(), 1816U);
    EXPECT_TRUE(memory == EmbeddedMemory(kSeed));
  }

  const RouteToTestSet& route_;
  const Row& row_;
  TempFolder folder_;
  std::optional<WiredBench> bench_;
  Relay wire_;
  Station station_;
  std::chrono::milliseconds took_{};
  std::chrono::milliseconds waited_{};
};

}  // namespace

void TakeRoads(const RouteToTestSet& route, const std::vector<Row>& rows) {
  ASSERT_EQ(EmbeddedMemory(kSeed).size(), 1816U);
  std::vector<std::thread> roads;
  for (const Row& row : rows) {
    roads.emplace_back([&] {
      SCOPED_TRACE(testing::Message() << route.name << ", " << NameOf(row.wrong) << ", " << NameOf(row.at));
      try {
        Road(route, row).BreaksAndIsWholeAgain();
      } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
      }
    });
  }
  for (std::thread& road : roads) road.join();
}

}  // namespace orvane::test
