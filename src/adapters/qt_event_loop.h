#pragma once

#include <QEventLoop>
#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <queue>
#include <vector>

#include "platform/event_loop.h"

namespace orvane {

/// Out of the toolkit's dispatcher, behind the events that it served: its display has gone. It comes each time from
/// then on.
struct DisplayGone {};

/// Real time and the events of the operating system, served by Qt's dispatcher. It needs a QCoreApplication.
///
/// The station's own events run in the frame of `Yield`, never inside a frame of Qt's: so their exceptions come out
/// of `Yield` and they may yield again to any depth. Slots of Qt objects therefore only `Post` what is to be done.
class QtEventLoop final : public EventLoop {
 public:
  QtEventLoop();
  ~QtEventLoop() override;

  [[nodiscard]] TimePoint Now() const override;
  /// May return early, with nothing served, when the system woke it for something that was no event of ours.
  void Yield(TimePoint until) override;
  void Spin(std::int64_t turns) override;
  void PostAt(TimePoint when, std::function<void()> event) override;

  /// Serves the windows alone, in a call that keeps the station waiting: they are painted, and what is typed and
  /// clicked there is taken up as far as it is posted. No event of the station's own is served, nothing is read of
  /// any line or socket.
  void ServeWindows();

  /// Ahead of each sleep: until when it will last, unless the system has an event. What takes processor time and can
  /// wait, such as painting, costs the station nothing there.
  std::function<void(TimePoint)> onFreeTime;
  /// The display has gone; told once, as an event. All else is served as before.
  std::function<void()> onDisplayGone;

 private:
  struct Event {
    TimePoint when;
    std::uint64_t order;
    std::function<void()> run;
    bool operator<(const Event& other) const { return when != other.when ? when > other.when : order > other.order; }
  };

  bool ServeSystem(QEventLoop::ProcessEventsFlags flags);
  bool ServeDue();
  [[nodiscard]] TimePoint NextDue(TimePoint until) const;
  /// Not later.
  void WakeAt(TimePoint when);

  bool displayGone_ = false;
  std::uint64_t posted_ = 0;
  std::priority_queue<Event> events_;
  /// QTimer knows whole milliseconds only; a byte on the line lasts 87 microseconds.
  int timer_;
  /// When it next goes off.
  TimePoint alarm_ = kForever;
  QSocketNotifier timerExpired_;
};

}  // namespace orvane
