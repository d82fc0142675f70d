// A GPIB library that fails on the road: the run ends with its cause, and the same station takes the next unit.

#include <gtest/gtest.h>

#include <optional>
#include <thread>

#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

constexpr int kSeed = 5;

struct Failure {
  /// In which the run ends, none when the failure is harmless.
  const char* step;
  /// For the stand-in.
  const char* fault;
  const char* says;
};

/// Up to the run the station writes five lines to the test set and reads two replies; the receive run reads none.
constexpr Failure kFailures[] = {
    {"receive", "ibwrt/1@20=C000:6", "the message was not taken within 1 s"},
    {"receive", "ibwrt/1@20=8000:2", "ibsta = &H8000, iberr = 2"},
    {"transmitDCS", "ibrd/1@5=C000:6", "no reply within 1 s (ibrd: "},
    {"transmitDCS", "ibrd/1@5=8000:2", "ibsta = &H8000, iberr = 2"},
    // A read may give its reply in pieces.
    {nullptr, "ibrd/1@5=cut:3", nullptr},
};

class NativeRoad {
 public:
  explicit NativeRoad(const Failure& failure) : failure_(failure), bench_(std::in_place, Bench()) {
    const Variable library("LD_LIBRARY_PATH", GPIB_STAND_IN_FOLDER);
    const Variable instruments("GPIB_STAND_IN", "1=" + bench_->Place("testset") + " 2=" + bench_->Place("supply") +
                                                    " 5=" + bench_->Place("load"));
    const Variable faults("GPIB_STAND_IN_FAULTS", failure.fault);
    station_.emplace(Arguments{"--com1", folder_ / "target"});
  }

  void FailsAndIsTakenAgain() {
    SCOPED_TRACE(failure_.fault);
    station_->Set("OrvaneMain.cboTimeOut", "select", "1s");
    station_->InitializeInstruments();
    const Json answer = station_->Click("OrvaneMain.cmdTargetInitialize");
    if (failure_.step != nullptr) {
      JudgeFailure(answer);
      TakeAnotherBench();
      EXPECT_TRUE(station_->Click("OrvaneMain.cmdTargetInitialize").contains("result"));
    }
    const Json verdict = station_->Await("verdict");
    EXPECT_EQ(verdict["result"], "PASS");
    EXPECT_EQ(verdict["complete"], true) << verdict;
    EXPECT_TRUE(ContentOf(folder_ / "eeprom.bin") == EmbeddedMemory(kSeed));
  }

 private:
  [[nodiscard]] Arguments Bench() const {
    return {"--target", folder_ / "target", "--seed", std::to_string(kSeed), "--store", folder_.Path().string()};
  }

  void JudgeFailure(const Json& answer) {
    ASSERT_TRUE(answer.contains("error")) << answer;
    const std::string text = answer["error"]["message"];
    std::printf("native %-20s %s\n", failure_.fault, text.c_str());
    EXPECT_THAT(text, HasSubstr(failure_.says));
    EXPECT_THAT(text, testing::StartsWith("Instrument at address 1, route native: "));
    EXPECT_EQ(station_->Await("box")["text"], text);
    const Json verdict = station_->Await("verdict");
    EXPECT_EQ(verdict["result"], "NONE");
    EXPECT_EQ(verdict["steps"].back()["name"], failure_.step);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "eeprom.bin"));
  }

  void TakeAnotherBench() {
    Arguments places = Bench();
    for (const char* what : {"testset", "supply", "load"}) {
      places.insert(places.end(), {std::string("--") + what, bench_->Place(what)});
    }
    station_->Set("OrvaneMain.cboTimeOut", "select", "10s");
    station_->Click("OrvaneMain.cmdTargetReset");
    bench_->Kill();
    bench_.emplace(places);
    // The stand-in may notice only by its next message that the bench was away.
    station_->Click("OrvaneMain.cmdInstrumentInitialize");
    station_->Click("OrvaneMain.cmdPSInitialize");
    station_->Click("frmBaseBand.cmdLoaderInitialize");
    station_->InitializeInstruments();
  }

  const Failure& failure_;
  TempFolder folder_;
  std::optional<WiredBench> bench_;
  std::optional<Station> station_;
};

TEST(NativeFaults, EndTheRunWithTheirCauseAndTheNextUnitGoesTheWholeRoad) {
  ASSERT_EQ(EmbeddedMemory(kSeed).size(), 1816U);
  std::vector<std::unique_ptr<NativeRoad>> roads;
  for (const Failure& failure : kFailures) roads.push_back(std::make_unique<NativeRoad>(failure));
  std::vector<std::thread> threads;
  for (auto& road : roads) {
    threads.emplace_back([&road] {
      try {
        road->FailsAndIsTakenAgain();
      } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
      }
      // Here: its second bench would not outlive the thread that started it.
      road.reset();
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace orvane::test
