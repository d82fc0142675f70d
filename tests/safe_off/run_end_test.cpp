#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/safe_off/station_safe_off.h"

namespace orvane::test {
namespace {

TEST(RunEnd, OfAWholeRunLeavesTheBenchOnBehindPassAlone) {
  EXPECT_TRUE(LeavesBenchOn({.verdict = Verdict::Pass}));
  EXPECT_FALSE(LeavesBenchOn({.verdict = Verdict::Fail}));
  EXPECT_FALSE(LeavesBenchOn({.verdict = Verdict::None}));
  EXPECT_FALSE(LeavesBenchOn({.verdict = Verdict::None, .thrown = true}));
  // What comes behind the verdict does not take it back.
  EXPECT_TRUE(LeavesBenchOn({.verdict = Verdict::Pass, .thrown = true}));
  EXPECT_TRUE(LeavesBenchOn({.verdict = Verdict::Pass, .stopped = true}));
}

TEST(RunEnd, ByHandLeavesTheBenchOnWhereItCameToItsEndAndDidNotFailTheUnit) {
  for (const RunKind kind :
       {RunKind::Receive, RunKind::Gsm, RunKind::Dcs, RunKind::Transmit, RunKind::Rf, RunKind::Charger}) {
    EXPECT_TRUE(LeavesBenchOn({.kind = kind})) << RunKindText(kind);
    EXPECT_FALSE(LeavesBenchOn({.kind = kind, .thrown = true})) << RunKindText(kind);
    EXPECT_FALSE(LeavesBenchOn({.kind = kind, .stopped = true})) << RunKindText(kind);
    EXPECT_FALSE(LeavesBenchOn({.kind = kind, .failed = true})) << RunKindText(kind);
  }
}

}  // namespace
}  // namespace orvane::test
