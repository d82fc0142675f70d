// What a tile makes of what a station's port tells.

#include "app/stations/station_sight.h"

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using Json = nlohmann::ordered_json;
using Stands = StationSight::Stands;

Json StepNote(const char* name, const char* state) { return {{"name", name}, {"state", state}, {"reason", ""}}; }

Json VerdictNote(const char* result, bool complete, const char* reason = "") {
  return {{"result", result},
          {"complete", complete},
          {"steps", Json::array({{{"name", "receive"}, {"complete", true}, {"reason", ""}},
                                 {{"name", "charger"}, {"complete", complete}, {"reason", reason}}})}};
}

/// A station that is there.
StationSight Idle() {
  StationSight sight;
  sight.Started();
  sight.Connected();
  return sight;
}

TEST(StationSight, FollowsARunToItsVerdict) {
  StationSight sight = Idle();
  EXPECT_EQ(sight.stands, Stands::Idle);
  sight.Take("step", StepNote("receive", "began"));
  EXPECT_EQ(sight.stands, Stands::InRun);
  EXPECT_EQ(sight.step, "receive");
  EXPECT_EQ(sight.stepsDone, 0);
  sight.Take("step", StepNote("receive", "complete"));
  sight.Take("step", StepNote("transmitDCS", "began"));
  EXPECT_EQ(sight.step, "transmitDCS");
  EXPECT_EQ(sight.stepsDone, 1);
  sight.Take("verdict", VerdictNote("PASS", true));
  EXPECT_EQ(sight.stands, Stands::Idle);
  EXPECT_EQ(sight.verdict, "PASS");
  EXPECT_TRUE(sight.isComplete);
  EXPECT_EQ(sight.reason, "");

  sight.Take("step", StepNote("receive", "began"));
  EXPECT_EQ(sight.verdict, "") << "the last unit's verdict is not this one's";
  EXPECT_EQ(sight.stepsDone, 0);
}

TEST(StationSight, CountsUnitsThatCameToAVerdictAndThoseThatPassedInFull) {
  StationSight sight = Idle();
  EXPECT_EQ(sight.YieldPercent(), -1);
  const auto takeThrough = [&](const Json& verdict) {
    sight.Take("step", StepNote("receive", "began"));
    sight.Take("verdict", verdict);
  };
  takeThrough(VerdictNote("PASS", true));
  takeThrough(VerdictNote("PASS", false, "It was left early."));
  EXPECT_EQ(sight.reason, "It was left early.");
  takeThrough(VerdictNote("FAIL", false));
  takeThrough(VerdictNote("NONE", false));
  sight.Take("verdict", VerdictNote("FAIL", false));
  EXPECT_EQ(sight.verdict, "FAIL") << "of something that was tried by hand";
  EXPECT_EQ(sight.units, 3) << "a run that was stopped is no unit of the shift";
  EXPECT_EQ(sight.passed, 1);
  EXPECT_EQ(sight.YieldPercent(), 33);
  sight.EndedSo("It ended with status 0.");
  sight.Started();
  EXPECT_EQ(sight.units, 3) << "the shift goes on";
}

TEST(StationSight, OneThatDiesInARunHasAUnitThatIsNotCalibrated) {
  StationSight sight = Idle();
  sight.EndedSo("It was ended by signal 9 (Killed).");
  EXPECT_FALSE(sight.diedInRun);
  sight = Idle();
  sight.Take("step", StepNote("save", "began"));
  sight.EndedSo("It was ended by signal 9 (Killed).");
  EXPECT_EQ(sight.stands, Stands::Ended);
  EXPECT_TRUE(sight.diedInRun);
  EXPECT_EQ(sight.ending, "It was ended by signal 9 (Killed).");
  sight.Started();
  EXPECT_FALSE(sight.diedInRun);
  EXPECT_EQ(sight.ending, "");
}

TEST(StationSight, ABoxStandsUntilTheRunGoesOn) {
  StationSight sight = Idle();
  sight.Take("box", {{"id", 1}, {"text", "Battery Calibration ERROR."}});
  EXPECT_EQ(sight.box, "Battery Calibration ERROR.");
  sight.Take("step", StepNote("charger", "incomplete"));
  EXPECT_EQ(sight.box, "");
}

TEST(StationSight, TakesTheUnitsNumberAndItsAbsence) {
  StationSight sight = Idle();
  sight.TakeUnit({{"serial", "A-1"}, {"operator", nullptr}});
  EXPECT_EQ(sight.unit, "A-1");
  sight.TakeUnit({{"serial", nullptr}});
  EXPECT_EQ(sight.unit, "");
}

TEST(StationSight, WhatMeansNothingHereChangesNothing) {
  StationSight sight = Idle();
  for (const Json& odd : {Json(), Json("text"), Json(7), Json::array({1}), Json::object()}) {
    sight.Take("failure", odd);
    sight.Take("exit", odd);
    if (!odd.is_object()) {
      for (const char* method : {"step", "verdict", "box"}) sight.Take(method, odd);
    }
    sight.TakeUnit(odd);
  }
  EXPECT_EQ(sight.stands, Stands::Idle);
  EXPECT_EQ(sight.units, 0);
}

}  // namespace
}  // namespace orvane::test
