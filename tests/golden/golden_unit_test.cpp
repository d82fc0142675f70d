// Where a station stands with its golden unit, over hours and days, in virtual time.

#include "app/golden/golden_unit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "app/unit_identity.h"
#include "golden/golden_runs.h"
#include "platform/virtual_event_loop.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using namespace std::chrono_literals;

constexpr const char* kDue = "The golden unit G-001 is due: run it first.";

class AGoldenUnit : public testing::Test {
 protected:
  /// A station that starts now.
  GoldenUnit& Started(GoldenBook book = {GoldenRun()}) {
    unit_.reset();
    unit_ = std::make_unique<GoldenUnit>(GoldenOptions{.serial = kGolden}, std::move(book), loop_,
                                         [this] { return Now(); });
    unit_->changed.Connect([this] { ++changes_; });
    return *unit_;
  }
  /// By the clock on the wall.
  [[nodiscard]] std::int64_t Now() const {
    return kFirstRunMs + std::chrono::duration_cast<std::chrono::milliseconds>(loop_.Now() + clockOff_).count();
  }
  void Pass(TimePoint span) {
    const TimePoint until = loop_.Now() + span;
    while (loop_.Now() < until) loop_.Yield(until);
  }
  RunRecord EndedNow(RunRecord run) const {
    run.identity.beganMs = Now() - 30000;
    if (run.end) run.end->endedMs = Now();
    return run;
  }
  RunRecord Take(RunRecord run) {
    run = EndedNow(std::move(run));
    unit_->Take(run);
    return run;
  }
  template <class State>
  [[nodiscard]] bool Is() const {
    return std::holds_alternative<State>(unit_->State());
  }

  VirtualEventLoop loop_;
  TimePoint clockOff_{0};
  int changes_ = 0;
  std::unique_ptr<GoldenUnit> unit_;
};

const RunRecord kOutside = GoldenRun({.batteryCounts = -20});

TEST_F(AGoldenUnit, ThatWasNeverCheckedKeepsAllOthersAway) {
  Started();
  EXPECT_TRUE(Is<GoldenNeverChecked>());
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), kDue);
  EXPECT_EQ(unit_->NextUnitRefusal(""), kDue) << "one without a number is another one";
  EXPECT_EQ(unit_->NextUnitRefusal(kGolden), std::nullopt);
  EXPECT_EQ(unit_->LastCheck(), nullptr);
}

TEST_F(AGoldenUnit, ThatIsInsideLetsOthersRunForHalfADay) {
  Started();
  Take(GoldenRun());
  EXPECT_EQ(changes_, 1);
  ASSERT_TRUE(Is<GoldenGood>());
  EXPECT_EQ(std::get<GoldenGood>(unit_->State()).dueMs, Now() + 12 * 3600 * 1000);
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), std::nullopt);
  EXPECT_TRUE(unit_->LastCheck()->Inside());
  Pass(12h);
  EXPECT_TRUE(Is<GoldenGood>()) << "to the end of that time";
  EXPECT_EQ(changes_, 1);
  Pass(1ms);
  EXPECT_TRUE(Is<GoldenOverdue>());
  EXPECT_EQ(changes_, 2) << "whoever shows it need not ask";
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), kDue);
  Take(GoldenRun());
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), std::nullopt);
}

TEST_F(AGoldenUnit, ThatIsOutsideSaysWhatItPointsToUntilACheckIsInside) {
  Started();
  Take(kOutside);
  ASSERT_TRUE(Is<GoldenOutside>());
  EXPECT_EQ(
      unit_->NextUnitRefusal("A-1"),
      "The golden unit G-001 was outside its limits: battery full count: 607 count, by the reference 627, limit "
      "5, and 1 more. Battery counts are off: look at the supply, its leads and their loss.");
  EXPECT_EQ(unit_->NextUnitRefusal(kGolden), std::nullopt);
  EXPECT_FALSE(unit_->LastCheck()->Inside());
  Pass(48h);
  EXPECT_TRUE(Is<GoldenOutside>()) << "time mends nothing";
  Take(GoldenRun());
  EXPECT_TRUE(Is<GoldenGood>());
}

TEST_F(AGoldenUnit, ThatIsNoCompletePassIsOutside) {
  Started();
  RunRecord stopped = GoldenRun();
  stopped.end->verdict = "NONE";
  stopped.end->complete = false;
  stopped.end->ending = Ending::Stopped;
  stopped.end->reason = "The run was stopped.";
  Take(stopped);
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"),
            "The golden unit G-001 was outside its limits: The run was no complete PASS: The run was stopped.");
}

TEST_F(AGoldenUnit, HasItsRecordSayWhatCameOfTheCheck) {
  Started();
  const RunRecord inside = Take(GoldenRun());
  EXPECT_EQ(inside.readings.back().name, "golden.differences");
  EXPECT_EQ(inside.readings.back().value, 0);
  EXPECT_EQ(inside.readings.back().Inside(), true);
  EXPECT_EQ(nlohmann::json::parse(inside.Document("golden")->content),
            nlohmann::json::parse(R"({"reference": "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60", "inside": true,
                                      "shortfall": "", "differences": [], "pointsTo": []})"));
  const RunRecord outside = Take(kOutside);
  EXPECT_EQ(outside.readings.back().value, 2);
  EXPECT_EQ(outside.readings.back().Inside(), false);
  const auto told = nlohmann::json::parse(outside.Document("golden")->content);
  EXPECT_EQ(told["inside"], false);
  ASSERT_EQ(told["differences"].size(), 2U);
  EXPECT_EQ(told["differences"][1],
            nlohmann::json::parse(R"({"reading": "battery.shutdown", "value": 478, "expected": 498, "limit": 5,
                "words": "battery shut-down count: 478 count, by the reference 498, limit 5"})"));
  EXPECT_EQ(told["pointsTo"].size(), 1U);
}

TEST_F(AGoldenUnit, IsNotCheckedByRunsOfOthersNorByRunsByHand) {
  Started();
  RunRecord other = GoldenRun();
  other.identity.serial = "A-1";
  RunRecord byHand = GoldenRun();
  byHand.identity.kind = "transmit";
  for (const RunRecord& run : {other, byHand}) {
    EXPECT_EQ(Take(run), EndedNow(run));
    EXPECT_TRUE(Is<GoldenNeverChecked>());
  }
  EXPECT_EQ(changes_, 0);
}

TEST_F(AGoldenUnit, AnExcuseLetsOthersRunAndStandsInEachRecord) {
  Started();
  Take(kOutside);
  changes_ = 0;
  EXPECT_TRUE(unit_->Excuse("the new supply comes on Monday"));
  EXPECT_EQ(changes_, 1);
  ASSERT_TRUE(Is<GoldenExcused>());
  EXPECT_EQ(std::get<GoldenExcused>(unit_->State()).why, "the new supply comes on Monday");
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), std::nullopt);
  RunIdentity run;
  run.tags = {{"line", "A"}};
  unit_->Mark(run);
  EXPECT_EQ(run.tags, (std::map<std::string, std::string>{{"line", "A"},
                                                          {"golden_excuse", "the new supply comes on Monday"},
                                                          {"golden_excuse_until", "2026-11-22T15:04:05.678Z"}}));
  Take(kOutside);
  EXPECT_TRUE(Is<GoldenExcused>()) << "it is known already";
  Take(GoldenRun());
  EXPECT_TRUE(Is<GoldenGood>());
  unit_->Mark(run);
  EXPECT_EQ(run.tags, (std::map<std::string, std::string>{{"line", "A"}}));
}

TEST_F(AGoldenUnit, AnExcuseLastsAsLongAsAGoodCheck) {
  Started();
  EXPECT_TRUE(unit_->Excuse("it is in repair"));
  Pass(12h - 1ms);
  EXPECT_TRUE(Is<GoldenExcused>());
  EXPECT_EQ(changes_, 1);
  Pass(2ms);
  EXPECT_TRUE(Is<GoldenNeverChecked>());
  EXPECT_EQ(changes_, 2);
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), kDue);
}

TEST_F(AGoldenUnit, NeedsAReasonThatARecordCanHoldAndNoneWhereNothingStandsInTheWay) {
  Started();
  EXPECT_THROW(unit_->Excuse(""), UnitFault);
  EXPECT_THROW(unit_->Excuse("a\tb"), UnitFault);
  EXPECT_THROW(unit_->Excuse("\xFF"), UnitFault);
  EXPECT_TRUE(Is<GoldenNeverChecked>());
  Take(GoldenRun());
  EXPECT_FALSE(unit_->Excuse("to be sure"));
  EXPECT_TRUE(Is<GoldenGood>());
  Pass(13h);
  EXPECT_TRUE(Is<GoldenOverdue>()) << "what was said then is no excuse now";
}

TEST_F(AGoldenUnit, TagsOfItsOwnAreNobodyElses) {
  Started();
  RunIdentity run;
  run.tags = {{"golden_excuse", "because"}, {"golden_excuse_until", "2099-01-01"}};
  unit_->Mark(run);
  EXPECT_THAT(run.tags, IsEmpty());
}

TEST_F(AGoldenUnit, IsWhatItsLastCheckWasWhenTheStationStarts) {
  Pass(24h);
  const RunRecord now = EndedNow(GoldenRun());
  const RunRecord failed = EndedNow(kOutside);
  RunRecord open = now;
  open.end.reset();
  Started({GoldenRun(), now});
  EXPECT_TRUE(Is<GoldenGood>());
  EXPECT_EQ(unit_->LastCheck(), nullptr) << "it was not made by this station's program";
  Started({GoldenRun(), GoldenRun()});
  EXPECT_TRUE(Is<GoldenOverdue>()) << "a day ago";
  Started({GoldenRun(), failed});
  EXPECT_TRUE(Is<GoldenOutside>());
  Started({GoldenRun(), open});
  EXPECT_TRUE(Is<GoldenOutside>());
  EXPECT_THAT(*unit_->NextUnitRefusal("A-1"), HasSubstr("The run did not come to its end."));
}

TEST_F(AGoldenUnit, IsToldOverdueInTimeAlsoBehindAStart) {
  Pass(3h);
  Started({GoldenRun(), EndedNow(GoldenRun())});
  Pass(12h + 1ms);
  EXPECT_EQ(changes_, 1);
}

TEST_F(AGoldenUnit, AnExcuseThatHoldsWhenTheStationStartsHoldsOn) {
  Started({GoldenRun(), EndedNow(kOutside), GoldenExcuse{"it is in repair", Now() + 1000}});
  EXPECT_EQ(unit_->NextUnitRefusal("A-1"), std::nullopt);
  Pass(1s);
  EXPECT_THAT(*unit_->NextUnitRefusal("A-1"), StartsWith("The golden unit G-001 was outside"));
}

TEST_F(AGoldenUnit, AnExcuseThatTheLastCheckHasEndedIsNotTakenUpAgain) {
  const GoldenExcuse excuse{"it is in repair", Now() + 5000};
  RunRecord check = EndedNow(GoldenRun());
  check.identity.tags = {{kExcuseTag, excuse.why}, {kExcuseUntilTag, UtcText(excuse.untilMs)}};
  Started({GoldenRun(), check, excuse});
  EXPECT_TRUE(Is<GoldenGood>());
  RunRecord outside = check;
  ReadingIn(outside, "battery.full").value += 50;
  Started({GoldenRun(), outside, excuse});
  EXPECT_TRUE(Is<GoldenExcused>());
  Started({GoldenRun(), check, GoldenExcuse{"another one", Now() + 6000}});
  EXPECT_TRUE(Is<GoldenExcused>()) << "one that came behind the check";
}

TEST_F(AGoldenUnit, AClockThatWasSetBackBuysNoTime) {
  Started({GoldenRun(), EndedNow(GoldenRun()), std::nullopt});
  clockOff_ = -48h;
  EXPECT_TRUE(Is<GoldenOverdue>());
  clockOff_ = 0h;
  Started({GoldenRun(), EndedNow(kOutside), GoldenExcuse{"why", Now() + 1000}});
  clockOff_ = -48h;
  EXPECT_TRUE(Is<GoldenOutside>());
}

TEST_F(AGoldenUnit, ThatIsGoneTellsNothing) {
  Started();
  Take(GoldenRun());
  unit_.reset();
  loop_.RunDry();
  EXPECT_EQ(changes_, 1);
}

}  // namespace
}  // namespace orvane::test
