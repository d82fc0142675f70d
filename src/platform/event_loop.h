#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace orvane {

/// A point of the station's monotonic time, in nanoseconds.
using TimePoint = std::chrono::nanoseconds;

inline constexpr TimePoint kForever = TimePoint::max();

/// The only source of time and of events. One thread. The station waits nowhere else.
class EventLoop {
 public:
  EventLoop() = default;
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;
  virtual ~EventLoop() = default;

  [[nodiscard]] virtual TimePoint Now() const = 0;

  /// Serves the events that are due; if none is, sleeps until one is or until that time, and serves it. An
  /// exception out of an event comes out of here.
  virtual void Yield(TimePoint until) = 0;

  /// Processor time: an empty counting loop. Serves nothing.
  virtual void Spin(std::int64_t turns) = 0;

  /// An event for a later turn of the loop, at once or at a time. Events of one time come in the order of posting.
  virtual void PostAt(TimePoint when, std::function<void()> event) = 0;
  void Post(std::function<void()> event) { PostAt(Now(), std::move(event)); }
};

}  // namespace orvane
