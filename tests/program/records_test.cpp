// What the built program keeps of its runs, looked at by another process.

#include <gtest/gtest.h>

#include <filesystem>

#include "adapters/sql/open_store.h"
#include "app/replay/replayed_run.h"
#include "program/programs.h"
#include "program/wired_bench.h"
#include "records/record_store.h"
#include "records/wire_log.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

struct Shop {
  [[nodiscard]] std::string Place() const { return "sqlite:" + (folder / "records.sqlite"); }
  [[nodiscard]] Arguments With(Arguments more) const {
    more.insert(more.begin(), {"--records", Place()});
    return more;
  }
  [[nodiscard]] std::vector<RunSummary> Runs() const { return OpenStore(Place())->List({}); }

  TempFolder folder;
};

TEST(Records, ARunIsInTheStoreWithWhatItWasToldOfItsUnit) {
  const Shop shop;
  const Child::End end =
      RunOrvane(shop.With({"--initialize", "--bench", "virtual:seed=3", "--station", "S 1", "--serial", "단말 7",
                           "--operator", "Kim", "--part", "P-2", "--tag", "line=A"}));
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(end.errors, "");
  const auto runs = shop.Runs();
  ASSERT_THAT(runs, SizeIs(1));
  const RunIdentity& run = runs.front().identity;
  EXPECT_EQ(run.station, "S 1");
  EXPECT_EQ(run.serial, "단말 7");
  EXPECT_EQ(run.operatorName, "Kim");
  EXPECT_EQ(run.part, "P-2");
  EXPECT_EQ(run.tags, (std::map<std::string, std::string>{{"line", "A"}}));
  EXPECT_EQ(run.kind, "whole");
  EXPECT_EQ(run.bench, "virtual");
  EXPECT_EQ(run.benchSetup, "virtual:seed=3");
  ASSERT_TRUE(runs.front().end);
  EXPECT_EQ(runs.front().end->verdict, "PASS");
  EXPECT_TRUE(runs.front().end->complete);

  const auto store = OpenStore(shop.Place());
  const auto record = store->Load(run.id);
  ASSERT_TRUE(record);
  EXPECT_THAT(record->steps, SizeIs(5));
  for (const char* role : {"parameters.before", "parameters.after", "eeprom.sent", "flash.100", "ramp_table",
                           "power_index", "initial_value", "cable_loss", "panel", "trace"}) {
    const RecordedDocument* const document = record->Document(role);
    ASSERT_NE(document, nullptr) << role;
    EXPECT_FALSE(document->content.empty()) << role;
  }
  EXPECT_EQ(record->Document("eeprom.sent")->content, EmbeddedMemory(3));
  EXPECT_EQ(store->Check(run.id), std::vector<std::string>{});
  EXPECT_EQ(RunAgain(*record).Text(), "");
}

TEST(Records, OfRunsInRealTimeOnRealWiresRunAgainAsTheyWere) {
  const Shop shop;
  {
    WiredBench bench({"--fault", "battery"});
    Arguments arguments = bench.Options();
    arguments.push_back("--initialize");
    EXPECT_EQ(RunOrvane(shop.With(arguments)).status, 1);
  }
  {
    WiredBench bench;
    Station station(shop.With(bench.Options()));
    station.InitializeInstruments();
    (void)station.SendClick("OrvaneMain.cmdTargetInitialize");
    station.AwaitState("DcsCalDone", true);
    (void)station.Set("frmAutoCal.txtErrorRate", "text", "0.2");
    (void)station.Click("frmAutoCal.cmdAutoCalStop");
    EXPECT_TRUE(station.Await("record")["run"].is_string());
  }
  const auto store = OpenStore(shop.Place());
  const auto runs = shop.Runs();
  ASSERT_THAT(runs, SizeIs(2));
  EXPECT_EQ(runs.front().end->ending, Ending::Stopped);
  EXPECT_EQ(runs.back().end->verdict, "FAIL");
  for (const RunSummary& run : runs) EXPECT_EQ(RunAgain(*store->Load(run.identity.id)).Text(), "");
}

TEST(Records, AVirtualBenchKeepsNoneUnlessItIsAskedTo) {
  const TempFolder home;
  const Variable state("XDG_STATE_HOME", home.Path().string());
  EXPECT_EQ(RunOrvane({"--initialize", "--bench", "virtual"}).status, 0);
  EXPECT_TRUE(std::filesystem::is_empty(home.Path()));
}

TEST(Records, EachVerdictIsFollowedByTheRecordsId) {
  const Shop shop;
  Station station(shop.With({"--bench", "virtual"}));
  station.InitializeInstruments();
  (void)station.Click("OrvaneMain.cmdTargetInitialize");
  EXPECT_EQ(station.Await("verdict")["result"], "PASS");
  const Json told = station.Await("record");
  const auto runs = shop.Runs();
  ASSERT_THAT(runs, SizeIs(1));
  EXPECT_EQ(told, (Json{{"run", runs.front().identity.id}}));
}

TEST(Records, WhatASubscriberWasToldIsWhatTheRecordHas) {
  const Shop shop;
  Station station(shop.With({"--bench", "virtual:fault=battery"}));
  station.InitializeInstruments();
  (void)station.Ask("subscribe", {{"topics", {"reading", "step"}}});
  (void)station.Click("OrvaneMain.cmdTargetInitialize");
  (void)station.Await("record");
  const auto record = OpenStore(shop.Place())->Load(shop.Runs().front().identity.id);
  const auto textOrNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
  const auto numberOrNull = [](const std::optional<double>& value) { return value ? Json(*value) : Json(); };
  Json readings = Json::array();
  for (const RecordedReading& each : record->readings) {
    if (each.name.starts_with("road.")) continue;
    const auto inside = each.Inside();
    readings.push_back({{"name", each.name},
                        {"value", each.value},
                        {"unit", each.unit},
                        {"low", numberOrNull(each.low)},
                        {"high", numberOrNull(each.high)},
                        {"inside", inside ? Json(*inside) : Json()},
                        {"step", textOrNull(each.step)}});
  }
  EXPECT_GT(readings.size(), 100U);
  EXPECT_EQ(Json(station.Heard("reading")), readings);

  Json steps = Json::array();
  for (const RecordedStep& each : record->steps) {
    steps.push_back({{"name", each.name}, {"state", "began"}, {"reason", ""}});
    steps.push_back(
        {{"name", each.name}, {"state", each.complete ? "complete" : "incomplete"}, {"reason", each.reason}});
  }
  EXPECT_EQ(steps.size(), 10U);
  EXPECT_EQ(Json(station.Heard("step")), steps);
}

TEST(Records, AStoreThatCannotBeMadeHarmsNoRunAndIsTold) {
  const TempFolder folder;
  Fill(folder / "file", "in the way");
  Station station({"--records", "sqlite:" + (folder / "file/records.sqlite"), "--bench", "virtual"});
  station.InitializeInstruments();
  (void)station.Click("OrvaneMain.cmdTargetInitialize");
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true);
  const Json told = station.Await("record");
  EXPECT_TRUE(told["run"].is_null()) << told;
  EXPECT_THAT(told["fault"].get<std::string>(), HasSubstr("file"));
}

TEST(Records, WhatALockedStoreDoesNotTakeLiesBesideItAndIsTakenInLater) {
  const Shop shop;
  EXPECT_EQ(RunOrvane(shop.With({"--initialize", "--bench", "virtual"})).status, 0);
  {
    // Another program holds the store for as long as this run lasts.
    Child holder({"/usr/bin/sqlite3", shop.folder / "records.sqlite"});
    holder.Send("BEGIN IMMEDIATE; SELECT 'held';");
    ASSERT_TRUE(holder.Says("held"));
    const Child::End end = RunOrvane(shop.With({"--initialize", "--bench", "virtual"}));
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.errors, HasSubstr("The record lies beside the store."));
  }
  EXPECT_THAT(shop.Runs(), SizeIs(1));
  EXPECT_FALSE(std::filesystem::is_empty(shop.folder / "spool"));
  EXPECT_EQ(RunOrvane(shop.With({"--initialize", "--bench", "virtual"})).status, 0);
  EXPECT_THAT(shop.Runs(), SizeIs(3));
  EXPECT_TRUE(std::filesystem::is_empty(shop.folder / "spool"));
}

TEST(Records, ARunWhoseStationWasKilledIsEndedAsAbandonedByTheNextStart) {
  const Shop shop;
  {
    Station station(shop.With({"--bench", "virtual"}));
    station.InitializeInstruments();
    (void)station.SendClick("OrvaneMain.cmdTargetInitialize");
    station.AwaitState("GsmCalDone", true);
    station.Process().Kill();
  }
  ASSERT_THAT(shop.Runs(), SizeIs(1));
  EXPECT_FALSE(shop.Runs().front().end) << "it runs, as far as the store knows";
  EXPECT_EQ(RunOrvane(shop.With({"--initialize", "--bench", "virtual"})).status, 0);
  const auto runs = shop.Runs();
  ASSERT_THAT(runs, SizeIs(2));
  ASSERT_TRUE(runs.back().end);
  EXPECT_EQ(runs.back().end->ending, Ending::Abandoned);
  EXPECT_EQ(runs.back().end->verdict, "NONE");
  EXPECT_EQ(runs.front().end->ending, Ending::Verdict);

  const auto killed = OpenStore(shop.Place())->Load(runs.back().identity.id);
  ASSERT_TRUE(killed);
  ASSERT_NE(killed->Document("trace"), nullptr);
  const WireNotes wires = ReadWireLog(killed->Document("trace")->content);
  EXPECT_EQ(wires.damage, "");
  EXPECT_GT(wires.notes.size(), 500U) << "two bands were calibrated";
  EXPECT_TRUE(std::filesystem::is_empty(shop.folder / "spool"));
}

}  // namespace
}  // namespace orvane::test
