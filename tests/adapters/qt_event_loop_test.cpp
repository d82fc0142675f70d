#include "adapters/qt_event_loop.h"

#include <gtest/gtest.h>
#include <time.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "adapters/qt_test.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

using QtLoop = test::QtTest;

/// Processor time of this process.
TimePoint ProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

TEST_F(QtLoop, ServesEventsByTimeAndThenInTheOrderOfPosting) {
  std::string order;
  const TimePoint at = loop_.Now() + 3ms;
  loop_.PostAt(at, [&] { order += "b"; });
  loop_.PostAt(at, [&] { order += "c"; });
  loop_.PostAt(at - 1ms, [&] { order += "a"; });
  loop_.Post([&] { order += "0"; });
  YieldFor(6ms);
  EXPECT_EQ(order, "0abc");
}

TEST_F(QtLoop, AnEventIsNeverEarlyAndTheLoopItselfAddsLessThanAMillisecond) {
  // A busy machine holds up many a wait, but not all of them; a loop that counts in milliseconds would.
  constexpr auto kPatience = 10s;
  const TimePoint start = loop_.Now();
  TimePoint leastLate = kForever;
  for (int waits = 0; waits < 21 || (leastLate >= 1ms && loop_.Now() - start < kPatience); ++waits) {
    const TimePoint due = loop_.Now() + 300us;
    bool served = false;
    loop_.PostAt(due, [&] {
      served = true;
      const TimePoint late = loop_.Now() - due;
      EXPECT_GE(late, 0ns);
      leastLate = std::min(leastLate, late);
    });
    while (!served) loop_.Yield(kForever);
  }
  EXPECT_LT(leastLate, 1ms);
}

TEST_F(QtLoop, AWaitSleepsAndUsesNoProcessorTime) {
  const TimePoint start = loop_.Now();
  const TimePoint used = ProcessorTime();
  YieldFor(100ms);
  EXPECT_GE(loop_.Now() - start, 100ms);
  EXPECT_LT(ProcessorTime() - used, 20ms);
}

TEST_F(QtLoop, FreeTimeIsToldAheadOfASleepUpToTheNextEvent) {
  std::vector<TimePoint> told;
  loop_.onFreeTime = [&](TimePoint until) { told.push_back(until); };
  loop_.Post([] {});
  loop_.Yield(loop_.Now() + 1s);
  EXPECT_TRUE(told.empty()) << "it has work to do";

  const TimePoint due = loop_.Now() + 20ms;
  bool served = false;
  loop_.PostAt(due, [&] { served = true; });
  while (!served) loop_.Yield(kForever);
  ASSERT_FALSE(told.empty());
  for (const TimePoint until : told) EXPECT_EQ(until, due);

  told.clear();
  const TimePoint end = loop_.Now() + 3ms;
  while (loop_.Now() < end) loop_.Yield(end);
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.front(), end);
}

TEST_F(QtLoop, WhatIsPostedInFreeTimeIsServedWithoutASleep) {
  bool posted = false;
  bool served = false;
  loop_.onFreeTime = [&](TimePoint) {
    if (!std::exchange(posted, true)) loop_.Post([&] { served = true; });
  };
  const TimePoint end = loop_.Now() + 10s;
  while (!served && loop_.Now() < end) loop_.Yield(end);
  EXPECT_TRUE(served);
  EXPECT_LT(loop_.Now(), end);
}

TEST_F(QtLoop, ATimeThatHasPassedReturnsAtOnce) {
  const TimePoint start = loop_.Now();
  loop_.Yield(start - 1s);
  loop_.Yield(start);
  EXPECT_LT(loop_.Now() - start, 50ms);
}

TEST_F(QtLoop, AnExceptionOfAnEventComesOutOfYieldAndTheNextEventStillRuns) {
  bool ran = false;
  loop_.Post([] { throw std::runtime_error("from the event"); });
  loop_.Post([&] { ran = true; });
  EXPECT_THROW(YieldFor(2ms), std::runtime_error);
  YieldFor(2ms);
  EXPECT_TRUE(ran);
}

TEST_F(QtLoop, EventsMayYieldThemselvesAndExceptionsCrossAllTheLevels) {
  std::string order;
  loop_.Post([&] {
    order += "outer(";
    loop_.Post([&] {
      order += "inner";
      throw std::runtime_error("from the inner event");
    });
    YieldFor(5ms);
    order += "never";
  });
  EXPECT_THROW(YieldFor(5ms), std::runtime_error);
  EXPECT_EQ(order, "outer(inner");
}

TEST_F(QtLoop, AChainOfEventsDoesNotKeepTheCallerFromReturning) {
  int links = 0;
  std::function<void()> next = [&] {
    if (++links < 1000) loop_.Post(next);
  };
  loop_.Post(next);
  loop_.Yield(loop_.Now());
  EXPECT_GE(links, 1);
  EXPECT_LT(links, 1000);
  while (links < 1000) loop_.Yield(kForever);
}

TEST_F(QtLoop, ASpinTakesProcessorTimeInProportionToItsTurns) {
  const auto spin = [&](std::int64_t turns) {
    const TimePoint start = ProcessorTime();
    loop_.Spin(turns);
    return ProcessorTime() - start;
  };
  spin(1'000'000);
  EXPECT_GT(spin(40'000'000), 4 * spin(4'000'000));
}

}  // namespace
}  // namespace orvane
