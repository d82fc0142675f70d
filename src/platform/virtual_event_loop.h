#pragma once

#include <cstdint>
#include <functional>
#include <queue>
#include <stdexcept>
#include <vector>

#include "platform/event_loop.h"

namespace orvane {

/// Nobody will ever end this wait: the queue is empty and the wait has no limit. A fault of the test or program.
class EndlessWait : public std::logic_error {
 public:
  EndlessWait() : std::logic_error("The virtual loop waits for an event that nobody will post.") {}
};

/// Time is a number: it moves when the station waits or spins, and never by itself. Repeatable to the byte.
class VirtualEventLoop final : public EventLoop {
 public:
  [[nodiscard]] TimePoint Now() const override { return now_; }
  void Yield(TimePoint until) override;
  /// A turn is 2 ns.
  void Spin(std::int64_t turns) override {
    now_ += TimePoint{turns * 2};
    spun_ += TimePoint{turns * 2};
  }
  void PostAt(TimePoint when, std::function<void()> event) override;

  /// Time that passes inside a call that blocks and serves nothing, such as a read from a silent instrument.
  void Block(TimePoint span) { now_ += span; }

  /// How much of the time passed in spins.
  [[nodiscard]] TimePoint Spun() const { return spun_; }

  /// Serves events until none is left; for tests and at the end of a program.
  void RunDry();

 private:
  struct Event {
    TimePoint when;
    std::uint64_t order;
    std::function<void()> run;
    bool operator<(const Event& other) const { return when != other.when ? when > other.when : order > other.order; }
  };

  bool ServeOneDue();

  TimePoint now_{0};
  TimePoint spun_{0};
  std::uint64_t posted_ = 0;
  std::priority_queue<Event> events_;
};

}  // namespace orvane
