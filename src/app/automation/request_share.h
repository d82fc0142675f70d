#pragma once

#include <algorithm>
#include <chrono>

#include "platform/event_loop.h"

namespace orvane {

/// What a client may take of the time of what the station is doing. A request costs what passes from its begin to its
/// end, or to its first wait; ten times that has to pass before the next one is served. So however many come, and
/// whatever each of them costs, they take a tenth of the time, and what is under way lasts no longer than ten ninths
/// of what it would. Time that no request took is kept up to `kKept`, so that nobody who asks now and then waits.
class RequestShare {
 public:
  explicit RequestShare(const EventLoop& loop) : loop_(loop) {}

  /// When the next request may be served.
  [[nodiscard]] TimePoint NextAt() const { return paidUntil_; }

  void Begin() {
    End();
    measuring_ = true;
    begin_ = loop_.Now();
  }
  /// Counts once for each begin, wherever it is met first.
  void End() {
    if (!measuring_) return;
    measuring_ = false;
    Charge(loop_.Now() - begin_);
  }
  void Charge(TimePoint cost) {
    const TimePoint now = loop_.Now();
    paidUntil_ = std::min(std::max(paidUntil_, now - kKept) + kParts * cost, now + kLongestPause);
  }
  /// Nothing is under way whose time could be taken.
  void Forget() { paidUntil_ = TimePoint{0}; }

 private:
  static constexpr int kParts = 10;
  static constexpr TimePoint kKept = std::chrono::milliseconds(20);
  /// One request may block the station for seconds, as a message to a dead instrument does. Whoever asks next, for
  /// the stop of a run perhaps, is not made to wait for minutes.
  static constexpr TimePoint kLongestPause = std::chrono::seconds(1);

  const EventLoop& loop_;
  TimePoint paidUntil_{0};
  TimePoint begin_{0};
  bool measuring_ = false;
};

}  // namespace orvane
