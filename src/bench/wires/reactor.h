#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <queue>
#include <vector>

#include "bench/wires/file_descriptor.h"

namespace orvane::bench {

/// The program's event loop: files that become readable, and times, met within some tens of microseconds.
class Reactor {
 public:
  using Time = std::chrono::nanoseconds;  ///< of the monotonic clock

  Reactor();

  [[nodiscard]] static Time Now();
  void At(Time when, std::function<void()> act);
  /// Calls `act` whenever the file can be read, has been closed at its other end, or has failed.
  void WhenReadable(int fd, std::function<void()> act) { readers_[fd] = std::move(act); }
  void Forget(int fd) { readers_.erase(fd); }

  /// Serves until a SIGTERM or SIGINT.
  void Run();

 private:
  struct Timer {
    Time when;
    unsigned long order;
    std::function<void()> act;
    bool operator<(const Timer& other) const { return when != other.when ? when > other.when : order > other.order; }
  };

  void ServeTimers();
  void SetClock();

  FileDescriptor clock_;
  FileDescriptor signals_;
  std::priority_queue<Timer> timers_;
  unsigned long posted_ = 0;
  std::map<int, std::function<void()>> readers_;
};

}  // namespace orvane::bench
