#include "adapters/qt/calm_painting.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <thread>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// Counts how often it is painted, and what it painted last.
class Picture final : public QWidget {
 public:
  void Show(int number) {
    number_ = number;
    update();
    QCoreApplication::processEvents();
  }
  int paintings = 0;
  int painted = 0;
  std::chrono::milliseconds cost{0};

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    ++paintings;
    painted = number_;
    std::this_thread::sleep_for(cost);
  }

 private:
  int number_ = 0;
};

class CalmPaintingTest : public testing::Test {
 protected:
  void SetUp() override {
    picture_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&picture_));
    Rest();
  }
  /// Until the window has rested from whatever it painted.
  void Rest() {
    for (int before = -1; before != picture_.paintings;) {
      before = picture_.paintings;
      QTest::qWait(300);
    }
  }
  Picture picture_;
  CalmPainting calm_{picture_};
};

TEST_F(CalmPaintingTest, AFloodOfChangesIsPaintedSixtyTimesASecond) {
  const int before = picture_.paintings;
  constexpr int kChanges = 5000;
  QElapsedTimer time;
  time.start();
  for (int change = 1; change <= kChanges; ++change) {
    picture_.Show(change);
    calm_.UseFreeTime(1h);
  }
  const auto atMost = time.elapsed() / CalmPainting::kShortestRest.count() + 2;
  ASSERT_LT(atMost, kChanges / 2) << "the machine is too slow to tell";
  EXPECT_LE(picture_.paintings - before, atMost);
  EXPECT_TRUE(QTest::qWaitFor([this] { return picture_.painted == kChanges; })) << "the last one is seen";
}

TEST_F(CalmPaintingTest, ARestedWindowIsPaintedInTheFirstFreeTimeBehindAChange) {
  for (int change = 1; change <= 3; ++change) {
    picture_.Show(change);
    EXPECT_NE(picture_.painted, change);
    calm_.UseFreeTime(1h);
    EXPECT_EQ(picture_.painted, change);
    Rest();
  }
}

TEST_F(CalmPaintingTest, FreeTimeThatIsTooShortForItIsLeftAlone) {
  picture_.cost = 20ms;
  picture_.Show(1);
  calm_.UseFreeTime(1h);
  Rest();
  picture_.Show(2);
  calm_.UseFreeTime(19ms);
  EXPECT_EQ(picture_.painted, 1);
  calm_.UseFreeTime(1h);
  EXPECT_EQ(picture_.painted, 2);
}

TEST_F(CalmPaintingTest, WhatFitsIntoNoFreeTimeTakesAHundredthOfTheTimeAtMost) {
  picture_.cost = 10ms;
  picture_.Show(1);
  calm_.UseFreeTime(1h);
  Rest();
  const int before = picture_.paintings;
  constexpr int kTenths = 15;
  QElapsedTimer time;
  time.start();
  for (int change = 2; time.elapsed() < kTenths * 100; ++change) {
    picture_.Show(change);
    calm_.UseFreeTime(5ms);
  }
  // The first of them comes at once, and the last may have just begun.
  const auto atMost = time.elapsed() / (100 * picture_.cost.count()) + 2;
  EXPECT_GE(picture_.paintings - before, 1) << "it is painted all the same";
  EXPECT_LE(picture_.paintings - before, atMost);
}

TEST_F(CalmPaintingTest, AnOperatorsKeyIsAnsweredSoonAlsoByADearWindow) {
  // Two seconds would be the rest behind a painting that had no free time. A busy machine may hold one answer up, but
  // not all of them.
  constexpr int kTries = 10;
  picture_.cost = 30ms;
  bool soon = false;
  for (int change = 1; change <= kTries && !soon; ++change) {
    picture_.Show(2 * change);
    EXPECT_TRUE(QTest::qWaitFor([&] { return picture_.painted == 2 * change; }, 10'000));
    QTest::keyClick(picture_.windowHandle(), Qt::Key_A);
    QElapsedTimer time;
    time.start();
    picture_.Show(2 * change + 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return picture_.painted == 2 * change + 1; }, 10'000));
    soon = time.elapsed() < 1000;
  }
  EXPECT_TRUE(soon);
}

TEST_F(CalmPaintingTest, WithoutFreeTimeItIsPaintedAWhileLater) {
  picture_.Show(1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return picture_.painted == 1; }));
}

TEST_F(CalmPaintingTest, ARestedWindowIsNotPaintedWithoutAChange) {
  const int before = calm_.Paintings();
  calm_.UseFreeTime(1h);
  QTest::qWait(150);
  EXPECT_EQ(calm_.Paintings(), before);
}

}  // namespace
}  // namespace orvane::test
