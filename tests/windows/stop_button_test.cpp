// Stop at the foot of the main window, and on F12 from wherever the operator is.

#include "app/windows/stop_button.h"

#include <QLineEdit>

#include "adapters/qt/hands.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

/// A run under way, 1.5 s on, while `look` looks at it.
class StopButtonTest : public testing::Test {
 protected:
  void InMidRun(const std::function<void()>& look) {
    on_.loop.PostAt(on_.loop.Now() + std::chrono::milliseconds(1500), look);
    (void)on_.TakeTargetThrough();
  }
  /// Lets the act that was posted take place.
  void Turn() { on_.loop.Yield(on_.loop.Now()); }

  VirtualStation on_;
  StationStatus status_{on_.loop, on_.bench.Serial(), on_.State(), on_.Panels()};
  Hands hands_{on_.loop, on_.station.Nest(), [] { return true; }};
  QWidget window_;
  StopButton button_{status_, hands_, on_.Panels().autoCal.cmdAutoCalStop, &window_};
};

TEST_F(StopButtonTest, IsThereWhileARunIsUnderWayAndSaysWhatItDoes) {
  window_.show();
  EXPECT_FALSE(button_.isVisible());
  InMidRun([&] {
    button_.Look();
    EXPECT_TRUE(button_.isVisible());
    EXPECT_EQ(button_.text().toStdString(), "Stop (F12): stops behind this level");
  });
  button_.Look();
  EXPECT_FALSE(button_.isVisible());
  EXPECT_EQ(on_.Concluded(), Verdict::Pass) << "nobody pressed it";
}

TEST_F(StopButtonTest, StopsTheRunAndSaysThatItIsAskedFor) {
  window_.show();
  InMidRun([&] {
    button_.Look();
    button_.click();
    Turn();
    button_.Look();
    EXPECT_EQ(button_.text().toStdString(), "Take Stop back (F12): stops behind this level");
  });
  EXPECT_EQ(on_.Concluded(), Verdict::None);
}

TEST_F(StopButtonTest, APressThatTheStationHasNoTimeForYetIsTold) {
  window_.show();
  InMidRun([&] {
    button_.click();
    button_.Look();
    EXPECT_EQ(button_.text().toStdString(), "Stop is taken up as soon as the station can");
    EXPECT_TRUE(button_.isDown());
    EXPECT_FALSE(status_.StopAsked());
    Turn();
    button_.Look();
    EXPECT_EQ(button_.text().toStdString(), "Take Stop back (F12): stops behind this level");
    EXPECT_TRUE(button_.isDown());
  });
  EXPECT_EQ(on_.Concluded(), Verdict::None);
}

TEST_F(StopButtonTest, F12StopsFromEveryWindowOnceAPress) {
  QLineEdit elsewhere;
  elsewhere.show();
  QTest::keyClick(&elsewhere, Qt::Key_F12);
  Turn();
  EXPECT_FALSE(on_.State().cal.CalStopRequested) << "nothing runs";
  InMidRun([&] {
    QTest::keyPress(&elsewhere, Qt::Key_F12);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_F12, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&elsewhere, &repeated);
    Turn();
    EXPECT_TRUE(status_.StopAsked());
  });
  EXPECT_EQ(on_.Concluded(), Verdict::None);
}

}  // namespace
}  // namespace orvane::test
