#include "adapters/qt/calm_painting.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

namespace orvane::test {
namespace {

/// Counts how often it is painted, and what it painted last.
class Picture final : public QWidget {
 public:
  void Show(int number) {
    number_ = number;
    update();
  }
  int paintings = 0;
  int painted = 0;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    ++paintings;
    painted = number_;
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
  CalmPainting* calm_ = new CalmPainting(picture_);
};

TEST_F(CalmPaintingTest, AFloodOfChangesIsPaintedSixtyTimesASecond) {
  const int before = picture_.paintings;
  constexpr int kChanges = 5000;
  QElapsedTimer time;
  time.start();
  for (int change = 1; change <= kChanges; ++change) {
    picture_.Show(change);
    QCoreApplication::processEvents();
  }
  const auto atMost = time.elapsed() / CalmPainting::kShortestRest.count() + 2;
  ASSERT_LT(atMost, kChanges / 2) << "the machine is too slow to tell";
  EXPECT_LE(picture_.paintings - before, atMost);
  EXPECT_TRUE(QTest::qWaitFor([this] { return picture_.painted == kChanges; })) << "the last one is seen";
}

TEST_F(CalmPaintingTest, AChangeOfARestedWindowIsPaintedAtOnce) {
  for (int change = 1; change <= 3; ++change) {
    picture_.Show(change);
    QCoreApplication::processEvents();
    EXPECT_EQ(picture_.painted, change);
    Rest();
  }
}

TEST_F(CalmPaintingTest, ARestedWindowIsNotPaintedWithoutAChange) {
  const int before = calm_->Paintings();
  QTest::qWait(150);
  EXPECT_EQ(calm_->Paintings(), before);
}

}  // namespace
}  // namespace orvane::test
