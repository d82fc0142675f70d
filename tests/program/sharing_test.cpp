// Two stations of one machine with one test set.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "adapters/sql/open_store.h"
#include "program/programs.h"
#include "program/wired_bench.h"
#include "records/record_store.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::MatchesRegex;

Arguments Sharing(Arguments arguments, const std::string& name, const std::string& folder, const std::string& wait) {
  for (const std::string& word : {std::string("--share"), std::string("1"), std::string("--share-dir"), folder,
                                  std::string("--share-wait"), wait, std::string("--station"), name}) {
    arguments.push_back(word);
  }
  return arguments;
}

/// A station in the box that a damaged battery raises, with its run and all that is lent to it around it.
int RunUpToItsBox(Station& station) {
  station.answersBoxes = false;
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("box")["text"], "Battery Calibration ERROR.");
  return run;
}

/// Whether somebody stands in front of the lock and waits for it.
bool IsWaitedFor(const std::string& file) {
  const int lock = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
  if (lock < 0) return false;
  struct flock place {};
  place.l_type = F_WRLCK;
  place.l_whence = SEEK_SET;
  place.l_start = (1L << 20) + 1;
  place.l_len = 1;
  const bool asked = ::fcntl(lock, F_OFD_GETLK, &place) == 0;
  ::close(lock);
  return asked && place.l_type != F_UNLCK;
}

TEST(Sharing, AStationWhoseTestSetAnotherOneHasFailsBehindItsWaitAndSaysWhoHasIt) {
  const TempFolder folder;
  const std::string locks = folder.Path().string();
  Station a(Sharing({"--bench", "virtual:fault=battery"}, "A", locks, "120"));
  const int run = RunUpToItsBox(a);

  Station b(Sharing({"--bench", "virtual"}, "B", locks, "1"));
  const int click = b.SendClick("OrvaneMain.cmdInstrumentInitialize");
  EXPECT_EQ(b.State("TestSetReady"), false) << "it is served while it waits";
  EXPECT_THAT(
      b.Await("failure")["text"].get<std::string>(),
      MatchesRegex(
          "Instrument at address 1, route virtual: it is shared, and station A, process [0-9]+ has it. This station "
          "has waited for 1 s.\r\nibsta = &HC000, iberr = 6"));
  EXPECT_EQ(b.AnswerTo(click)["error"]["code"], -32005);
  EXPECT_EQ(b.Click("OrvaneMain.cmdPSInitialize")["result"], Json::object()) << "the supply is its own";

  (void)a.Ask("answer", {{"id", 1}, {"button", "OK"}});
  EXPECT_EQ(a.AnswerTo(run)["result"], Json::object());
  EXPECT_EQ(b.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
}

TEST(Sharing, ARunThatWaitedPassesAndItsRecordSaysHowLong) {
  const TempFolder folder;
  const std::string store = "sqlite:" + (folder / "records.sqlite");
  const std::string locks = folder.Path().string();
  Station a(Sharing({"--bench", "virtual:fault=battery"}, "A", locks, "120"));
  const int first = RunUpToItsBox(a);

  Station b({"--bench", "virtual", "--records", store, "--share", "1", "--share-dir", locks, "--station", "B"});
  (void)b.Click("OrvaneMain.cmdPSInitialize");
  (void)b.Click("frmBaseBand.cmdLoaderInitialize");
  const int initialize = b.SendClick("OrvaneMain.cmdInstrumentInitialize");
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  const auto awaitWaiting = [&] {
    while (!IsWaitedFor(folder / "orvane-virtual_0_1_0.lock") && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(5ms);
    }
  };
  awaitWaiting();
  (void)a.Ask("answer", {{"id", 1}, {"button", "OK"}});
  EXPECT_EQ(a.AnswerTo(first)["result"], Json::object());
  EXPECT_EQ(b.AnswerTo(initialize)["result"], Json::object());

  const int second = a.SendClick("OrvaneMain.cmdTargetInitialize");
  const Json box = [&] {
    a.Await("verdict");
    return a.Await("box");
  }();
  const int run = b.SendClick("OrvaneMain.cmdTargetInitialize");
  awaitWaiting();
  std::this_thread::sleep_for(20ms);
  (void)a.Ask("answer", {{"id", box["id"]}, {"button", "OK"}});
  (void)a.AnswerTo(second);
  EXPECT_EQ(b.AnswerTo(run)["result"], Json::object());
  const Json verdict = b.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true);

  (void)b.Await("record");
  const auto runs = OpenStore(store)->List({});
  ASSERT_EQ(runs.size(), 1U);
  const auto& tags = runs.front().identity.tags;
  ASSERT_TRUE(tags.contains("shared_wait_seconds"));
  EXPECT_GE(std::stod(tags.at("shared_wait_seconds")), 0.02);
  for (const RecordedReading& reading : OpenStore(store)->Load(runs.front().identity.id)->readings) {
    EXPECT_NE(reading.name, "road.shared_wait_seconds");
  }
}

TEST(Sharing, AGatewaysOwnLockKeepsStationsOfOtherMachinesAway) {
  const TempFolder here;
  const TempFolder there;
  WiredBench bench({"--fault", "battery"});
  const Arguments route{"--com1", bench.Place("target"), "--gpib", "vxi11:" + bench.Place("vxi11")};
  Station a(Sharing(route, "A", here.Path().string(), "120"));
  const int run = RunUpToItsBox(a);

  // Its locks are elsewhere, as another machine's are.
  Station b(Sharing(route, "B", there.Path().string(), "1"));
  const int click = b.SendClick("OrvaneMain.cmdInstrumentInitialize");
  EXPECT_THAT(b.Await("failure")["text"].get<std::string>(),
              HasSubstr("gpib0,1: it is shared, and another client has it. This station has waited for 1 s."));
  (void)b.AnswerTo(click);

  (void)a.Ask("answer", {{"id", 1}, {"button", "OK"}});
  EXPECT_EQ(a.AnswerTo(run)["result"], Json::object());
  EXPECT_EQ(b.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
}

TEST(Sharing, WhatIsNoAddressAndNoSpanIsABadOption) {
  for (const Arguments& words :
       {Arguments{"--share", "31"}, Arguments{"--share", "-1"}, Arguments{"--share", "one"},
        Arguments{"--share", "1", "--share", "1"}, Arguments{"--share-wait", "soon"}, Arguments{"--share-wait", "-1"},
        Arguments{"--share-wait", "1", "--share-wait", "2"}}) {
    const Child::End end = RunOrvane(words);
    EXPECT_EQ(end.status, 64) << words[1];
    EXPECT_THAT(end.errors, HasSubstr(words[0])) << words[1];
  }
}

}  // namespace
}  // namespace orvane::test
