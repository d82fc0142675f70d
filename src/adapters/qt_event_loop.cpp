#include "adapters/qt_event_loop.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

int OpenTimer() {
  const int timer = ::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
  if (timer < 0) throw std::system_error(errno, std::generic_category(), "timerfd_create");
  return timer;
}

}  // namespace

QtEventLoop::QtEventLoop() : timer_(OpenTimer()), timerExpired_(timer_, QSocketNotifier::Read) {
  QObject::connect(&timerExpired_, &QSocketNotifier::activated, &timerExpired_, [this] {
    std::uint64_t expirations = 0;
    [[maybe_unused]] const auto bytes = ::read(timer_, &expirations, sizeof expirations);
    alarm_ = kForever;
  });
}

QtEventLoop::~QtEventLoop() {
  timerExpired_.setEnabled(false);
  ::close(timer_);
}

TimePoint QtEventLoop::Now() const { return std::chrono::steady_clock::now().time_since_epoch(); }

bool QtEventLoop::ServeSystem(QEventLoop::ProcessEventsFlags flags) {
  try {
    return QAbstractEventDispatcher::instance()->processEvents(flags);
  } catch (const DisplayGone&) {
    // What was served has been served, whether anything was is not known. To say no is safe: it has posted its
    // events.
    if (!std::exchange(displayGone_, true) && onDisplayGone) Post(onDisplayGone);
    return false;
  }
}

bool QtEventLoop::ServeDue() {
  // What an event posts is due later than this, so that a chain of events cannot keep the system's events out.
  const TimePoint now = Now();
  bool served = false;
  while (!events_.empty() && events_.top().when <= now) {
    // The queue hands out const references only; the event leaves it before it runs, since it may post or yield.
    auto run = std::move(const_cast<Event&>(events_.top()).run);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    events_.pop();
    served = true;
    run();
  }
  return served;
}

void QtEventLoop::WakeAt(TimePoint when) {
  // The end of most waits is never reached. An alarm that comes too soon costs less than one set for each of them.
  if (when >= alarm_) return;
  alarm_ = when;
  constexpr std::int64_t kSecond = 1'000'000'000;
  const auto nanoseconds = std::max(when, TimePoint{1}).count();
  itimerspec alarm{};
  alarm.it_value.tv_sec = nanoseconds / kSecond;
  alarm.it_value.tv_nsec = nanoseconds % kSecond;
  ::timerfd_settime(timer_, TFD_TIMER_ABSTIME, &alarm, nullptr);
}

TimePoint QtEventLoop::NextDue(TimePoint until) const {
  return events_.empty() ? until : std::min(until, events_.top().when);
}

void QtEventLoop::Yield(TimePoint until) {
  // A sleep looks for the system's events first; a look of its own is for those who want to know of it ahead.
  if (onFreeTime || NextDue(until) <= Now()) {
    const bool systemServed = ServeSystem(QEventLoop::AllEvents);
    if (ServeDue() || systemServed || until <= Now()) return;
    if (onFreeTime) onFreeTime(NextDue(until));
  }
  WakeAt(NextDue(until));
  ServeSystem(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  ServeDue();
}

void QtEventLoop::ServeWindows() {
  ServeSystem(QEventLoop::ExcludeSocketNotifiers);
  // Whoever waits here looks up again soon.
  constexpr std::chrono::milliseconds kNap{30};
  if (onFreeTime) onFreeTime(Now() + kNap);
}

void QtEventLoop::Spin(std::int64_t turns) {
  for (std::int64_t turn = 0; turn < turns; ++turn) {
    __asm__ volatile("" : "+r"(turn));  // The compiler must take the count as changed here, and so keep the loop.
  }
}

void QtEventLoop::PostAt(TimePoint when, std::function<void()> event) {
  events_.push({std::max(when, Now()), posted_++, std::move(event)});
}

}  // namespace orvane
