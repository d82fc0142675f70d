// A GPIB library that fails on the road: the failure has its cause, and the same station takes the next unit.

#include <gtest/gtest.h>

#include <optional>
#include <thread>

#include "program/error_box.h"
#include "program/wired_bench.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

constexpr int kSeed = 5;
constexpr const char* kTarget = "OrvaneMain.cmdTargetInitialize";

struct Failure {
  /// At which the failure strikes, none when it is harmless.
  int address;
  /// For the stand-in.
  const char* fault;
  const char* says;
  /// In which the run ends, or which it does not complete; none when it strikes at the instrument's Initialize.
  const char* step;
  const char* verdict = "NONE";
};

constexpr Failure kFailures[] = {
    // Up to the run the station writes five lines to the test set and reads two replies; the receive run reads none.
    {1, "ibwrt/1@20=C000:6", "the message was not taken within 1 s", "receive"},
    {1, "ibwrt/1@20=8000:2", "ibsta = &H8000, iberr = 2", "receive"},
    {1, "ibrd/1@5=C000:6", "no reply within 1 s (ibrd: ", "transmitDCS"},
    {1, "ibrd/1@5=8000:2", "ibsta = &H8000, iberr = 2", "transmitDCS"},
    // A read may give its reply in pieces.
    {0, "ibrd/1@5=cut:3", nullptr, nullptr},
    {0, "ibrd/2@1=cut:3", nullptr, nullptr},
    // The supply's Initialize asks once and writes three lines, a run four.
    {2, "ibwrt/2@1=8000:2", "the message was not sent (ibwrt: ", nullptr},
    {2, "ibrd/2@1=C000:6", "no reply within 1 s (ibrd: ", nullptr},
    {2, "ibrd/2@1=8000:2", "no reply (ibrd: ", nullptr},
    {2, "ibwrt/2@3=C000:6", "the message was not taken within 1 s", nullptr},
    {2, "ibwrt/2@4=8000:2", "the message was not sent (ibwrt: ", "charger", "PASS"},
    {2, "ibwrt/2@6=C000:6", "the message was not taken within 1 s", "charger", "FAIL"},
    {2, "ibwrt/2@7=8000:2", "the message was not sent (ibwrt: ", "charger", "PASS"},
    // The load's Initialize asks once and writes three lines; a run writes none.
    {5, "ibwrt/5@1=8000:2", "the message was not sent (ibwrt: ", nullptr},
    {5, "ibrd/5@1=C000:6", "no reply within 1 s (ibrd: ", nullptr},
    {5, "ibwrt/5@3=8000:2", "the message was not sent (ibwrt: ", nullptr},
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
    for (const char* box : {"OrvaneMain.cboTimeOut", "frmBaseBand.cboPSTimeOut", "frmBaseBand.cboLoaderTimeOut"}) {
      station_->Set(box, "select", "1s");
    }
    if (failure_.address != 0 && failure_.step == nullptr) {
      MeetErrorBox(InstrumentAt(failure_.address).initialize);
      TakeErrorAway();
    }
    station_->InitializeInstruments();
    if (failure_.step != nullptr) {
      FailInRun();
      TakeAnotherBench();
    }
    TakesAWholeRoad();
  }

 private:
  [[nodiscard]] Arguments Bench() const {
    return {"--target", folder_ / "target", "--seed", std::to_string(kSeed), "--store", folder_.Path().string()};
  }

  void FailInRun() {
    if (failure_.address == 1) {
      JudgeFailure(station_->Click(kTarget));
    } else {
      MeetErrorBox(kTarget);
    }
    const Json verdict = station_->Await("verdict");
    EXPECT_EQ(verdict["result"], failure_.verdict);
    EXPECT_EQ(verdict["complete"], false) << verdict;
    EXPECT_EQ(verdict["steps"].back()["name"], failure_.step);
    EXPECT_EQ(verdict["steps"].back()["complete"], false) << verdict;
    // The result is saved ahead of the charger's step.
    EXPECT_EQ(std::filesystem::exists(folder_ / "eeprom.bin"), failure_.address != 1);
    for (const char* memory : {"eeprom.bin", "flash100.txt"}) std::filesystem::remove(folder_ / memory);
    TakeErrorAway();
  }

  void JudgeFailure(const Json& answer) {
    ASSERT_TRUE(answer.contains("error")) << answer;
    const std::string text = answer["error"]["message"];
    std::printf("native %-20s %s\n", failure_.fault, text.c_str());
    EXPECT_THAT(text, HasSubstr(failure_.says));
    EXPECT_THAT(text, testing::StartsWith("Instrument at address 1, route native: "));
    EXPECT_EQ(station_->Await("box")["text"], text);
  }

  void MeetErrorBox(const std::string& control) {
    const bool timedOut = std::string(failure_.fault).ends_with("C000:6");
    const std::string who = "Instrument at address " + std::to_string(failure_.address) + ", route native: ";
    const Json answer = ClickIntoErrorBox(
        *station_, control, {who, failure_.says, timedOut},
        [&](const std::string& line) { std::printf("native %-20s %s\n", failure_.fault, line.c_str()); });
    EXPECT_TRUE(answer.contains("result")) << answer;
    errorWaits_ = station_->State(InstrumentAt(failure_.address).ready) == true;
  }

  void TakeErrorAway() {
    if (errorWaits_) ExpectInitializeTakesTheErrorAway(*station_, InstrumentAt(failure_.address));
    errorWaits_ = false;
  }

  void TakeAnotherBench() {
    Arguments places = Bench();
    for (const Instrument& instrument : kInstruments) {
      places.insert(places.end(), {std::string("--") + instrument.place, bench_->Place(instrument.place)});
    }
    station_->Set("OrvaneMain.cboTimeOut", "select", "10s");
    station_->Click("OrvaneMain.cmdTargetReset");
    bench_->Kill();
    bench_.emplace(places);
    // The stand-in may notice only by its next message that the bench was away.
    for (const Instrument& instrument : kInstruments) station_->Click(instrument.initialize);
    for (const Instrument& instrument : kInstruments) station_->Click(instrument.initialize);
    ExpectInstrumentsReady(*station_);
  }

  void TakesAWholeRoad() {
    const std::size_t boxes = station_->Heard("box").size();
    EXPECT_TRUE(station_->Click(kTarget).contains("result"));
    EXPECT_EQ(station_->Heard("box").size(), boxes);
    const Json verdict = station_->Heard("verdict").back();
    EXPECT_EQ(verdict["result"], "PASS");
    EXPECT_EQ(verdict["complete"], true) << verdict;
    EXPECT_TRUE(ContentOf(folder_ / "eeprom.bin") == EmbeddedMemory(kSeed));
    EXPECT_EQ(ContentOf(folder_ / "flash100.txt"), EmbeddedFlash(kSeed));
  }

  const Failure& failure_;
  TempFolder folder_;
  std::optional<WiredBench> bench_;
  std::optional<Station> station_;
  /// An error that the next Initialize ends with.
  bool errorWaits_ = false;
};

TEST(NativeFaults, HaveTheirCauseAndTheNextUnitGoesTheWholeRoad) {
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
