// What an operator sees and can do while an instrument keeps the station waiting.

#include <QSocketNotifier>
#include <QVBoxLayout>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/gpib/long_waits.h"
#include "adapters/loopback_instrument.h"
#include "adapters/qt_event_loop.h"
#include "app/windows/status_strip.h"
#include "app/windows/stop_button.h"
#include "windows/windows_test.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// Counts how often it was painted.
class Painted final : public QWidget {
 public:
  using QWidget::QWidget;
  int times = 0;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { ++times; }
};

/// Bytes of a line that nobody reads ahead of time.
struct UnreadLine {
  UnreadLine() { (void)!::pipe(ends.data()); }
  UnreadLine(const UnreadLine&) = delete;
  UnreadLine& operator=(const UnreadLine&) = delete;
  ~UnreadLine() {
    for (const int end : ends) ::close(end);
  }
  std::array<int, 2> ends{};
};

class InstrumentWaits : public testing::Test {
 protected:
  InstrumentWaits() {
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(picture_ = new Painted(&window_));
    column->addWidget(strip_ = new StatusStrip(status_, Surroundings{}, &window_));
    column->addWidget(stop_ = new StopButton(status_, hands_, on_.Panels().autoCal.cmdAutoCalStop, &window_));
    strip_->Follow(waits_);
    window_.resize(800, 200);
    window_.show();
    loop_.onFreeTime = [this](TimePoint until) { painting_.UseFreeTime(until - loop_.Now()); };
  }
  ~InstrumentWaits() override { loop_.onFreeTime = {}; }

  /// Asks the instrument something that it answers when `isEnough`, which is asked again and again in the wait.
  /// @return whether it ever was.
  bool AskUntil(const std::function<bool()>& isEnough) {
    const auto session = waited_.Open({0, 1, 0});
    session->Write("*IDN?", 60s);
    instrument_.Accept();
    bool answered = false;
    constexpr auto kPatience = 30s;
    waits_.onWait = [&] {
      loop_.ServeWindows();
      if (answered) return;
      answered = isEnough() || waits_.UnderWay()->lasts > kPatience;
      if (answered) instrument_.Reply("maker\n");
    };
    EXPECT_EQ(session->Read(1000, 60s), "maker\n");
    waits_.onWait = {};
    return isEnough();
  }
  [[nodiscard]] QString Stage() const { return strip_->findChild<QLabel*>("statusStage")->text(); }

  QtEventLoop loop_;
  Instrument instrument_;
  LongWaits waits_;
  RoutedGpibBus bus_{{.instruments = {{1, TcpRoute{"127.0.0.1", instrument_.Port()}}}}, &waits_};
  WaitedBus waited_{bus_, waits_};

  VirtualStation on_;
  StationStatus status_{on_.loop, on_.bench.Serial(), on_.State(), on_.Panels()};
  Hands hands_{loop_, on_.station.Nest(), [] { return true; }};
  QWidget window_;
  CalmPainting& painting_ = *new CalmPainting(window_);
  Painted* picture_;
  StatusStrip* strip_;
  StopButton* stop_;
};

TEST_F(InstrumentWaits, TheWindowsAreDrawnAndSayWhoIsWaitedForAndHowLong) {
  QCoreApplication::processEvents();
  EXPECT_TRUE(AskUntil([this] { return Stage() == "\u2026 Waiting for the test set (1): 1 of 60 s"; }))
      << Stage().toStdString();
  const int before = picture_->times;
  EXPECT_TRUE(AskUntil([this, before] {
    picture_->update();
    return picture_->times > before + 2;
  }));
  strip_->Look();
  EXPECT_EQ(Stage(), "No run yet");
}

TEST_F(InstrumentWaits, WhatIsPressedIsTakenUpBehindThem) {
  QCoreApplication::processEvents();
  bool& stopRequested = on_.State().cal.CalStopRequested;
  ASSERT_FALSE(stopRequested);
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QCoreApplication::postEvent(
        stop_, new QMouseEvent(type, QPointF(2, 2), stop_->mapToGlobal(QPointF(2, 2)), Qt::LeftButton, held, {}));
  }
  bool pressed = false;
  QObject::connect(stop_, &QToolButton::clicked, stop_, [&] { pressed = true; });
  EXPECT_TRUE(AskUntil([&] { return pressed; }));
  EXPECT_FALSE(stopRequested) << "nothing of the station runs within a wait";
  loop_.Yield(loop_.Now());
  EXPECT_TRUE(stopRequested);
}

TEST_F(InstrumentWaits, NothingElseIsServedInThem) {
  const UnreadLine line;
  QSocketNotifier bytes(line.ends[0], QSocketNotifier::Read);
  bool taken = false;
  QObject::connect(&bytes, &QSocketNotifier::activated, &bytes, [&] { taken = true; });
  ASSERT_EQ(::write(line.ends[1], "x", 1), 1);
  bool served = false;
  loop_.Post([&] { served = true; });
  loop_.PostAt(loop_.Now() + 10ms, [&] { served = true; });
  int glances = 0;
  EXPECT_TRUE(AskUntil([&] { return ++glances >= 10; }));
  EXPECT_FALSE(taken);
  EXPECT_FALSE(served);
  loop_.Yield(loop_.Now());
  EXPECT_TRUE(taken);
  EXPECT_TRUE(served);
}

}  // namespace
}  // namespace orvane::test
