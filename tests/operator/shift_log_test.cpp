// What the shift counts, and when it began.

#include "app/operator/shift_log.h"

#include <gmock/gmock.h>

#include <QDateTime>

namespace orvane::test {
namespace {

using testing::DoubleEq;
using testing::Optional;

ShiftUnit Unit(const std::string& serial, UnitOutcome outcome, std::int64_t beganMs, double seconds = 2) {
  return {"run " + std::to_string(beganMs), serial, outcome, seconds, beganMs};
}

TEST(ShiftLog, CountsAUnitOnceAndItsFirstVerdict) {
  ShiftLog shift;
  shift.Put(Unit("A", UnitOutcome::Fail, 10));
  shift.Put(Unit("A", UnitOutcome::Pass, 20));
  shift.Put(Unit("B", UnitOutcome::Pass, 30));
  EXPECT_EQ(shift.Units(), 2);
  EXPECT_THAT(shift.FirstPassYield(), Optional(DoubleEq(0.5)));
}

TEST(ShiftLog, ARunWithoutAVerdictIsNoUnitAndNoFirstRun) {
  ShiftLog shift;
  shift.Put(Unit("A", UnitOutcome::NoVerdict, 10, 99));
  EXPECT_EQ(shift.Units(), 0);
  EXPECT_FALSE(shift.FirstPassYield());
  EXPECT_FALSE(shift.SecondsAUnit());
  shift.Put(Unit("A", UnitOutcome::Pass, 20, 3));
  EXPECT_THAT(shift.FirstPassYield(), Optional(DoubleEq(1)));
  EXPECT_THAT(shift.SecondsAUnit(), Optional(DoubleEq(3)));
  EXPECT_EQ(shift.Last(10).size(), 2U);
}

TEST(ShiftLog, APassThatIsNotCompleteIsNoPass) {
  ShiftLog shift;
  shift.Put(Unit("A", UnitOutcome::NotComplete, 10));
  EXPECT_THAT(shift.FirstPassYield(), Optional(DoubleEq(0)));
}

TEST(ShiftLog, UnitsWithoutANumberAreEachOneOfTheirOwn) {
  ShiftLog shift;
  shift.Put(Unit("", UnitOutcome::Pass, 10));
  shift.Put(Unit("", UnitOutcome::Pass, 20));
  EXPECT_EQ(shift.Units(), 2);
}

TEST(ShiftLog, TakesARunOnceAndInAnyOrder) {
  ShiftLog shift;
  shift.Put(Unit("B", UnitOutcome::Pass, 30));
  shift.Put(Unit("A", UnitOutcome::Pass, 10));
  shift.Put(Unit("B", UnitOutcome::Pass, 30));
  const auto last = shift.Last(10);
  ASSERT_EQ(last.size(), 2U);
  EXPECT_EQ(last[0].serial, "B");
  EXPECT_EQ(last[1].serial, "A");
  EXPECT_EQ(shift.Last(1).size(), 1U);
}

TEST(ShiftLog, ForgetsTheShiftBefore) {
  ShiftLog shift;
  shift.Put(Unit("A", UnitOutcome::Pass, 10));
  shift.BeginAt(20);
  shift.Put(Unit("B", UnitOutcome::Pass, 15));
  shift.Put(Unit("C", UnitOutcome::Pass, 20));
  EXPECT_EQ(shift.Units(), 1);
}

TEST(ShiftBegin, IsTheLastStartOfADayOrTheLastOneOfTheDayBefore) {
  const std::vector<int> starts{6 * 60, 14 * 60, 22 * 60};
  const auto at = [](const char* text) { return QDateTime::fromString(text, Qt::ISODate).toMSecsSinceEpoch(); };
  EXPECT_EQ(ShiftBegin(starts, at("2026-11-22T13:59:00")), at("2026-11-22T06:00:00"));
  EXPECT_EQ(ShiftBegin(starts, at("2026-11-22T14:00:00")), at("2026-11-22T14:00:00"));
  EXPECT_EQ(ShiftBegin(starts, at("2026-11-22T05:00:00")), at("2026-11-21T22:00:00"));
  EXPECT_EQ(ShiftBegin({}, at("2026-11-22T05:00:00")), at("2026-11-22T00:00:00"));
}

}  // namespace
}  // namespace orvane::test
