// The station that switches its bench off, and its bench, looked at by somebody who is neither.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "adapters/sql/open_store.h"
#include "app/replay/replayed_run.h"
#include "program/wired_bench.h"
#include "records/record_store.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

Arguments With(Arguments arguments, const Arguments& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

std::string StateOf(const WiredBench& bench) {
  return "supply " + bench.Ask("supply", "OUTPUT?") + ", load " + bench.Ask("load", "INPUT?");
}
constexpr const char* kOn = "supply 1, load 1";
constexpr const char* kOff = "supply 0, load 0";

/// The process that switches it off for a station of this test's own, by a word of its command; 0 when there is none.
pid_t ProcessWith(const std::string& word) {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string command = ContentOf(entry.path() / "cmdline");
    if (command.find("orvane-safe-off") < command.find('\0') && command.find(word) != std::string::npos) {
      return std::stoi(entry.path().filename().string());
    }
  }
  return 0;
}

/// Whether it is so in the end. Who brings it about is nobody's child here, and cannot be waited for.
bool Comes(const std::function<bool()>& what) {
  const auto limit = std::chrono::steady_clock::now() + 60s;
  while (!what()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::sleep_for(20ms);
  }
  return true;
}

/// The bench goes off, and the process that did it is gone: its devices may be another bench's next.
bool GoesOff(const WiredBench& bench, const std::string& word) {
  return Comes([&] { return StateOf(bench) == kOff; }) && Comes([&] { return ProcessWith(word) == 0; });
}

Arguments SafeWith(WiredBench& bench, const Arguments& more = {}) {
  return With(With(bench.Options(), {"--safe-off"}), more);
}

/// The ways on which all instruments hang together.
std::vector<Arguments> Buses(const WiredBench& bench) {
  return {{"--com1", bench.Place("target"), "--gpib", "prologix:" + bench.Place("adapter")},
          {"--com1", bench.Place("target"), "--gpib", "prologix:" + bench.Place("adapter-tty")},
          {"--com1", bench.Place("target"), "--gpib", "vxi11:" + bench.Place("vxi11")}};
}

constexpr const char* kRefused =
    "The supply's output could not be made sure to be off: no connection: Connection refused. Switch it off by hand.";

TEST(SafeOff, WithoutItTheBenchStaysOnWhateverEndsTheStation) {
  WiredBench bench({"--fault", "battery"});
  EXPECT_EQ(RunOrvane(With(bench.Options(), {"--initialize"})).status, 1);
  EXPECT_EQ(StateOf(bench), kOn);
}

TEST(SafeOff, BehindAFailBothAreOffAndTheStatusIsTheVerdicts) {
  WiredBench bench({"--fault", "battery"});
  const auto end = RunOrvane(SafeWith(bench, {"--initialize"}));
  EXPECT_EQ(end.status, 1);
  EXPECT_EQ(end.errors, "Warning: Battery Calibration ERROR. -> OK\n");
  EXPECT_EQ(StateOf(bench), kOff);
}

TEST(SafeOff, BehindAPassTheyAreOnUntilTheStationEnds) {
  WiredBench bench;
  Station station(SafeWith(bench));
  station.InitializeInstruments();
  station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("verdict")["result"], "PASS");
  (void)station.State("PSReady");
  EXPECT_EQ(StateOf(bench), kOn);
  station.Click("OrvaneMain.cmdExit");
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "");
  EXPECT_EQ(StateOf(bench), kOff);
}

TEST(SafeOff, TheEndOfAClientIsAnEndOfTheStation) {
  WiredBench bench;
  Station station(SafeWith(bench));
  station.InitializeInstruments();
  EXPECT_EQ(StateOf(bench), kOn);
  station.Process().CloseInput();
  EXPECT_EQ(station.Process().WaitForEnd().status, 0);
  EXPECT_EQ(StateOf(bench), kOff);
}

TEST(SafeOff, AStoppedRunLeavesThemOffAndTheNextOneBeginsWithTheirInitialize) {
  for (const std::size_t route : {0U, 1U, 2U, 3U}) {
    WiredBench bench;
    const Arguments options = route < 3 ? Buses(bench)[route] : bench.Options();
    SCOPED_TRACE(options[3]);
    Station station(With(options, {"--safe-off"}));
    station.InitializeInstruments();
    const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
    station.AwaitState("DcsCalDone", true);
    EXPECT_EQ(StateOf(bench), kOn);
    station.Click("frmAutoCal.cmdAutoCalStop");
    station.AnswerTo(run);
    EXPECT_EQ(station.Await("verdict")["result"], "NONE");
    // Asked at once: it waits until they are off.
    EXPECT_EQ(station.State("PSReady"), false);
    EXPECT_EQ(StateOf(bench), kOff);
    EXPECT_TRUE(station.Heard("instrument").empty());

    station.Click("OrvaneMain.cmdTargetReset");
    station.InitializeInstruments();
    EXPECT_EQ(StateOf(bench), kOn);
    station.Click("OrvaneMain.cmdTargetInitialize");
    const Json verdict = station.Await("verdict");
    EXPECT_EQ(verdict["result"], "PASS");
    EXPECT_EQ(verdict["complete"], true) << verdict;
    station.Process().CloseInput();
    EXPECT_EQ(station.Process().WaitForEnd().errors, "");
  }
}

TEST(SafeOff, AStationThatIsKilledInMidRunLeavesThemOff) {
  for (const std::size_t route : {0U, 1U, 2U, 3U}) {
    WiredBench bench;
    const Arguments options = route < 3 ? Buses(bench)[route] : bench.Options();
    SCOPED_TRACE(options[3]);
    Child station(Orvane(With(options, {"--safe-off", "--initialize"})));
    ASSERT_TRUE(station.Says("transmitDCS ..."));
    EXPECT_EQ(StateOf(bench), kOn);
    station.Kill();
    EXPECT_TRUE(GoesOff(bench, options[3])) << StateOf(bench);
  }
}

TEST(SafeOff, SoDoesOneOnTheSystemsGpibLibrary) {
  WiredBench bench;
  const Variable library("LD_LIBRARY_PATH", GPIB_STAND_IN_FOLDER);
  const Variable instruments(
      "GPIB_STAND_IN", "1=" + bench.Place("testset") + " 2=" + bench.Place("supply") + " 5=" + bench.Place("load"));
  Child station(Orvane({"--com1", bench.Place("target"), "--safe-off", "--initialize"}));
  ASSERT_TRUE(station.Says("transmitDCS ..."));
  EXPECT_EQ(StateOf(bench), kOn);
  station.Kill();
  EXPECT_TRUE(Comes([&] { return StateOf(bench) == kOff; })) << StateOf(bench);
}

TEST(SafeOff, SoDoesOneThatIsKilledWithItsWholeGroupOrTerminated) {
  for (const bool group : {true, false}) {
    WiredBench bench;
    Arguments command = Orvane(SafeWith(bench, {"--initialize"}));
    // The group's leader is the station then, not the test.
    command.insert(command.begin(), "/usr/bin/setsid");
    Child station(command);
    ASSERT_TRUE(station.Says("transmitDCS ..."));
    group ? station.KillGroup() : station.Terminate();
    EXPECT_TRUE(GoesOff(bench, bench.Place("supply"))) << StateOf(bench);
  }
}

TEST(SafeOff, WhatCouldNotBeMadeSureBehindAKillIsOnStandardErrorAndInTheRecordAllTheSame) {
  const TempFolder folder;
  const std::string store = "sqlite:" + (folder / "records.sqlite");
  WiredBench bench({"--fault", "supply-absent@5"});
  Child station(Orvane(SafeWith(bench, {"--initialize", "--records", store})));
  ASSERT_TRUE(station.Says("charger ..."));
  station.Terminate();
  // Both hold the standard error.
  const auto end = station.WaitForEnd();
  EXPECT_EQ(end.status, -SIGTERM);
  EXPECT_THAT(end.errors, HasSubstr(std::string("orvane-safe-off: ") + kRefused + "\n"));
  EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");

  EXPECT_EQ(RunOrvane({"--bench", "virtual", "--initialize", "--records", store}).status, 0);
  const auto records = OpenStore(store);
  const auto runs = records->List({});
  ASSERT_EQ(runs.size(), 2U);
  const auto killed = records->Load(runs.back().identity.id);
  ASSERT_TRUE(killed && killed->end);
  EXPECT_EQ(killed->end->ending, Ending::Abandoned);
  ASSERT_EQ(killed->boxes.size(), 1U);
  EXPECT_EQ(killed->boxes.front().title, "Safe-off");
  EXPECT_EQ(killed->boxes.front().text, kRefused);
  EXPECT_TRUE(fs::is_empty(folder / "spool")) << "nothing is left beside the store";
}

TEST(SafeOff, WhatCouldNotBeMadeSureIsInABoxOnStandardErrorAndInTheRecord) {
  const TempFolder folder;
  const std::string store = "sqlite:" + (folder / "records.sqlite");
  // It takes the charger's voltages and answers no question any more.
  WiredBench bench({"--fault", "supply-silent@4", "--fault", "battery"});
  const auto end = RunOrvane(SafeWith(bench, {"--initialize", "--records", store}));
  EXPECT_EQ(end.status, 1) << "the verdict's";
  EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");

  const auto records = OpenStore(store);
  const auto runs = records->List({});
  ASSERT_EQ(runs.size(), 1U);
  const auto record = records->Load(runs.front().identity.id);
  ASSERT_TRUE(record && record->end);
  EXPECT_EQ(record->end->verdict, "FAIL");
  ASSERT_EQ(record->boxes.size(), 2U);
  EXPECT_EQ(record->boxes.back().title, "Safe-off");
  const std::string& text = record->boxes.back().text;
  EXPECT_THAT(text, testing::MatchesRegex("The supply's output could not be made sure to be off: no reply within "
                                          "[0-9]+ m?s\\. Switch it off by hand\\."));
  EXPECT_THAT(end.errors, HasSubstr("orvane: " + text + "\n"));
  EXPECT_THAT(end.errors, HasSubstr("Safe-off: " + text + " -> OK\n"));
  EXPECT_EQ(RunAgain(*record).Text(), "") << "which has nothing to be switched off";
}

TEST(SafeOff, AClientIsToldOfItAndItsRecordDoesNotWaitForTheBoxsAnswer) {
  const TempFolder folder;
  WiredBench bench({"--fault", "load-absent@4", "--fault", "battery"});
  Station station(SafeWith(bench, {"--records", "sqlite:" + (folder / "records.sqlite")}));
  station.InitializeInstruments();
  station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("verdict")["result"], "FAIL");
  EXPECT_EQ(station.Await("box")["text"], "Battery Calibration ERROR.");
  station.answersBoxes = false;
  const Json told = station.Await("instrument");
  EXPECT_EQ(told["address"], 5);
  EXPECT_EQ(told["route"], "tcp:" + bench.Place("load"));
  EXPECT_THAT(told["text"], HasSubstr("The load's input could not be made sure to be off: "));
  const Json box = station.Await("box");
  EXPECT_EQ(box["title"], "Safe-off");
  EXPECT_EQ(box["text"], told["text"]);
  EXPECT_TRUE(station.Await("record")["run"].is_string());
  EXPECT_EQ(station.ErrorOf("answer", {{"id", box["id"]}, {"button", "OK"}}), 0);
}

TEST(SafeOff, NobodyWaitsForABoxAtTheEndOfAStationThatAClientEnds) {
  WiredBench bench;
  const std::string nobody = "tcp:" + OwnLoopbackAddress() + ":1";
  Station station({"--com1", bench.Place("target"), "--instrument", "2=" + nobody, "--instrument",
                   "5=tcp:" + bench.Place("load"), "--safe-off"});
  station.answersBoxes = false;
  (void)station.SendClick("OrvaneMain.cmdExit");
  const Json question = station.Await("box");
  (void)station.Send("answer", {{"id", question["id"]}, {"button", "OK"}});
  station.Await("exit");
  EXPECT_EQ(station.Heard("box").size(), 1U);
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, std::string("orvane: ") + kRefused + "\n");
}

TEST(SafeOff, AProcessForItThatIsKilledIsStartedAnew) {
  WiredBench bench;
  Station station(SafeWith(bench));
  station.InitializeInstruments();
  const std::string ofThisBench = "2=tcp:" + bench.Place("supply");
  const pid_t first = ProcessWith(ofThisBench);
  ASSERT_GT(first, 0);
  ASSERT_EQ(::kill(first, SIGKILL), 0);
  ASSERT_TRUE(Comes([&] {
    const pid_t second = ProcessWith(ofThisBench);
    return second != 0 && second != first;
  }));
  EXPECT_EQ(StateOf(bench), kOn) << "the station lives";
  station.Process().Kill();
  EXPECT_TRUE(GoesOff(bench, ofThisBench));
}

TEST(SafeOff, ASupplyThatOtherStationsUseTooIsNotSwitchedOffBehindTheirBack) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  const auto end = RunOrvane(SafeWith(bench, {"--share", "2"}));
  EXPECT_EQ(end.status, 64);
  EXPECT_THAT(end.errors, testing::StartsWith("orvane: --safe-off: the instrument at address 2 is lent by --share"));
  EXPECT_EQ(StateOf(bench), kOn);
}

TEST(SafeOff, OnTheEmbeddedBenchTheStationDoesItItself) {
  const TempFolder folder;
  const auto end =
      RunOrvane({"--bench", "virtual:fault=battery", "--initialize", "--safe-off", "--trace", folder / "trace"});
  EXPECT_EQ(end.status, 1);
  EXPECT_EQ(end.errors, "Warning: Battery Calibration ERROR. -> OK\n");
  const std::string trace = ContentOf(folder / "trace");
  EXPECT_THAT(trace, HasSubstr("\"text\":\"OUTPUT OFF\""));
  EXPECT_THAT(trace, HasSubstr("\"text\":\"INPUT?\""));
}

}  // namespace
}  // namespace orvane::test
