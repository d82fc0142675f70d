// The golden unit as the program has it: who is refused, what is told, and what a store remembers of it.

#include <gtest/gtest.h>

#include <algorithm>

#include "adapters/disk_files.h"
#include "adapters/sql/open_store.h"
#include "adapters/sql/record_file.h"
#include "app/replay/replayed_run.h"
#include "program/programs.h"
#include "records/record_store.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr std::int64_t kHourMs = 3'600'000;

/// A station whose golden unit is the bench's unit of seed 3, recorded as long ago as one likes.
class Golden : public testing::Test {
 protected:
  void RecordReference(std::int64_t hoursAgo = 0) {
    ASSERT_EQ(Run({"--serial", "G-001"}).status, 0);
    auto store = OpenStore(Place());
    reference_ = *store->Load(store->List({}).front().identity.id);
    if (hoursAgo == 0) return;
    for (std::int64_t* const time : {&reference_.identity.beganMs, &reference_.end->endedMs}) {
      *time -= hoursAgo * kHourMs;
    }
    std::filesystem::remove(folder_ / "records.sqlite");
    store = OpenStore(Place());
    ASSERT_TRUE(store->Finish(reference_));
  }
  [[nodiscard]] std::string Place() const { return "sqlite:" + (folder_ / "records.sqlite"); }
  [[nodiscard]] Arguments With(Arguments more, const std::string& bench = "virtual:seed=3") const {
    more.insert(more.begin(), {"--records", Place(), "--station", "S1", "--bench", bench});
    return more;
  }
  [[nodiscard]] Arguments OfGolden(Arguments more, const std::string& bench = "virtual:seed=3") const {
    more.insert(more.begin(), {"--golden", "G-001", "--golden-reference", reference_.identity.id});
    return With(more, bench);
  }
  [[nodiscard]] Child::End Run(Arguments more) const {
    more.emplace_back("--initialize");
    return RunOrvane(With(more));
  }
  [[nodiscard]] Child::End RunGolden(Arguments more, const std::string& bench = "virtual:seed=3") const {
    more.emplace_back("--initialize");
    return RunOrvane(OfGolden(more, bench));
  }
  /// The newest run.
  [[nodiscard]] RunRecord Last() const {
    const auto store = OpenStore(Place());
    return *store->Load(store->List({}).front().identity.id);
  }

  TempFolder folder_;
  RunRecord reference_;
};

constexpr const char* kLongerCable = "virtual:seed=3,loss=1";

TEST_F(Golden, ACheckOfLongAgoKeepsOthersAwayAheadOfTheFirstByte) {
  RecordReference(13);
  const auto refused = RunGolden({"--serial", "A-1", "--trace", folder_ / "trace"}, "virtual:seed=4");
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(refused.errors,
            "ORVANE: The golden unit G-001 is due: run it first. -> OK\nThe run ended without a verdict.\n");
  EXPECT_EQ(ContentOf(folder_ / "trace").find("COM1"), std::string::npos);
  EXPECT_EQ(RunGolden({"--serial", "A-1", "--check-every", "14h"}, "virtual:seed=4").status, 0)
      << "thirteen hours are fewer than fourteen";
}

TEST_F(Golden, ACheckThatIsInsideLetsOthersRunAlsoBehindTheNextStart) {
  RecordReference(13);
  const auto check = RunGolden({"--serial", "G-001"});
  EXPECT_EQ(check.status, 0);
  EXPECT_EQ(check.errors, "orvane: The golden unit G-001 is inside its limits.\n");
  const auto& readings = Last().readings;
  const auto told = std::find_if(readings.begin(), readings.end(),
                                 [](const RecordedReading& each) { return each.name == "golden.differences"; });
  ASSERT_NE(told, readings.end());
  EXPECT_EQ(told->value, 0);
  EXPECT_EQ(told->Inside(), true);
  ASSERT_NE(Last().Document("golden"), nullptr);
  EXPECT_EQ(RunAgain(Last()).Text(), "") << "what was told behind the run is no part of it";
  const auto other = RunGolden({"--serial", "A-1"}, "virtual:seed=4");
  EXPECT_EQ(other.status, 0);
  EXPECT_EQ(other.errors, "");
  EXPECT_EQ(Last().Document("golden"), nullptr) << "it is of golden units alone";
  EXPECT_TRUE(Last().identity.tags.empty());
}

TEST_F(Golden, ACheckThatIsOutsideSaysWhatItPointsToAndStopsTheLineUntilAnEngineerSaysWhy) {
  RecordReference();
  const auto check = RunGolden({"--serial", "G-001"}, kLongerCable);
  EXPECT_EQ(check.status, 2) << "a PASS of a unit that is not as it should be";
  EXPECT_THAT(check.errors, StartsWith("orvane: The golden unit G-001 is outside its limits: "));
  EXPECT_THAT(check.errors, HasSubstr("look at the RF cable"));
  EXPECT_EQ(Json::parse(Last().Document("golden")->content)["inside"], false);

  const auto refused = RunGolden({"--serial", "A-1"}, kLongerCable);
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.errors, StartsWith("ORVANE: The golden unit G-001 was outside its limits: "));
  EXPECT_THAT(refused.errors, HasSubstr("look at the RF cable"));

  EXPECT_EQ(RunGolden({"--serial", "A-1", "--golden-excuse", "new cable"}, kLongerCable).status, 0);
  EXPECT_EQ(Last().identity.tags["golden_excuse"], "new cable");
  EXPECT_EQ(RunGolden({"--serial", "A-2"}, kLongerCable).status, 0) << "the excuse outlives the program";
  EXPECT_EQ(Last().identity.tags["golden_excuse"], "new cable");

  EXPECT_EQ(RunGolden({"--serial", "G-001"}).status, 0);
  EXPECT_EQ(RunGolden({"--serial", "A-3"}).status, 0);
  EXPECT_TRUE(Last().identity.tags.empty());
  const auto needless = RunGolden({"--serial", "A-4", "--golden-excuse", "to be sure"});
  EXPECT_THAT(needless.errors, StartsWith("orvane: --golden-excuse: there is nothing to excuse"));
  EXPECT_TRUE(Last().identity.tags.empty());
}

TEST_F(Golden, AClientHearsTheTextAndTheBoxAndGoesOnBehindACheck) {
  RecordReference(13);
  Station station(OfGolden({}));
  station.InitializeInstruments();
  EXPECT_EQ(station.Ask("unit", {{"serial", "A-1"}})["result"]["serial"], "A-1");
  for (const char* const starter : {"OrvaneMain.cmdTargetInitialize", "frmAutoCal.cmdGSM"}) {
    const Json refused = station.Click(starter);
    EXPECT_EQ(refused["error"]["code"], -32005);
    EXPECT_EQ(refused["error"]["message"], "The golden unit G-001 is due: run it first.");
    EXPECT_EQ(station.Heard("box").back()["text"], "The golden unit G-001 is due: run it first.");
  }
  EXPECT_TRUE(station.Click("OrvaneMain.cmdPSInitialize").contains("result")) << "it starts no run";
  for (const char* const serial : {"G-001", "A-1"}) {
    EXPECT_EQ(station.Ask("unit", {{"serial", serial}})["result"]["serial"], serial);
    EXPECT_TRUE(station.Click("OrvaneMain.cmdTargetInitialize").contains("result")) << serial;
    EXPECT_EQ(station.Await("verdict")["result"], "PASS") << serial;
  }
}

TEST_F(Golden, AReferenceInAFileDoesForAStationWithoutRecordsYet) {
  RecordReference();
  DiskFiles files("", "");
  WriteRecordFile(files, folder_ / "golden.orvane", reference_);
  std::filesystem::remove(folder_ / "records.sqlite");
  const Arguments golden{"--golden", "G-001", "--golden-reference", folder_ / "golden.orvane"};
  Arguments other = golden;
  other.insert(other.end(), {"--serial", "A-1"});
  EXPECT_EQ(Run(other).status, 2) << "it was never checked here";
  Arguments check = golden;
  check.insert(check.end(), {"--serial", "G-001"});
  EXPECT_EQ(Run(check).status, 0);
  EXPECT_EQ(Run(other).status, 0);
}

TEST_F(Golden, WhatDoesNotFitTogetherIsABadOption) {
  RecordReference();
  const auto fault = [](const Arguments& arguments) {
    const auto end = RunOrvane(arguments);
    EXPECT_EQ(end.status, 64);
    return end.errors;
  };
  EXPECT_EQ(fault({"--bench", "virtual", "--golden", "G-001", "--golden-reference", "1"}),
            "orvane: --golden: it needs --records, which this station keeps none of\n");
  EXPECT_EQ(fault(With({"--golden", "G-001"})), "orvane: --golden: it needs a --golden-reference\n");
  EXPECT_EQ(fault(With({"--golden-excuse", "why"})), "orvane: --golden-excuse: there is no --golden beside it\n");
  EXPECT_EQ(
      fault(With({"--golden", "G-002", "--golden-reference", reference_.identity.id})),
      "orvane: --golden-reference: the run " + reference_.identity.id + " is of the unit \"G-001\", not \"G-002\"\n");
  EXPECT_THAT(fault(OfGolden({"--check-every", "soon"})), StartsWith("orvane: --check-every: \"soon\" is no time"));
  Fill(folder_ / "bench.toml", "golden = \"G-001\"\ngolden_reference = \"" + reference_.identity.id +
                                   "\"\n[golden_limits]\n\"tx.gms.*\" = 0.3\n");
  EXPECT_EQ(fault(With({"--profile", folder_ / "bench.toml"})),
            "orvane: " + (folder_ / "bench.toml") +
                ":4: golden_limits.tx.gms.*: no reading of the reference record has such a name\n");
}

TEST_F(Golden, AProfilesLimitsAreGoneBy) {
  RecordReference();
  Fill(folder_ / "bench.toml", "golden = \"G-001\"\ngolden_reference = \"" + reference_.identity.id +
                                   "\"\n[golden_limits]\n\"tx.*.power\" = 5\n\"rx.*\" = 100\n");
  const Arguments profile{"--profile", folder_ / "bench.toml", "--initialize", "--serial", "G-001"};
  EXPECT_EQ(RunOrvane(With(profile, kLongerCable)).status, 0);
  Fill(folder_ / "bench.toml", "golden = \"G-001\"\ngolden_reference = \"" + reference_.identity.id +
                                   "\"\n[golden_limits]\n\"tx.*.dac\" = 1\n\"tx.*.power\" = 5\n\"rx.*\" = 100\n");
  const auto asked = RunOrvane(With(profile, kLongerCable));
  EXPECT_EQ(asked.status, 2);
  EXPECT_THAT(asked.errors, HasSubstr("DAC value: "));
}

}  // namespace
}  // namespace orvane::test
