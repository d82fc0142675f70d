#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <string>
#include <thread>
#include <vector>

#include "bench/wires/file_descriptor.h"
#include "bench/wires/terminal_pair.h"

namespace orvane::test {

/// The wires to the Target and to the test set, led past a watch in a thread of its own: how long the station takes
/// from a reply to its next command, as the wire sees it; and a test set whose readings take their time.
class TappedWires {
 public:
  using Clock = std::chrono::steady_clock;

  /// @param target the device, @param testSet "HOST:PORT"
  TappedWires(const std::string& target, const std::string& testSet, std::chrono::milliseconds reading);
  TappedWires(const TappedWires&) = delete;
  TappedWires& operator=(const TappedWires&) = delete;
  ~TappedWires();

  [[nodiscard]] const std::string& Target() const { return target_.Path(); }
  [[nodiscard]] const std::string& TestSet() const { return place_; }

  /// Ends the watch.
  void End();
  /// Microseconds from each reply to the next command.
  [[nodiscard]] const std::vector<double>& GapsUs() const { return gapsUs_; }
  /// How often the test set was asked for a reading.
  [[nodiscard]] int Readings() const { return readings_; }

 private:
  struct Held {
    Clock::time_point until;
    std::string bytes;
  };

  void Watch();
  void CarryTarget();
  void CarryTestSet();
  void LetGo();

  std::chrono::milliseconds reading_;
  bench::TerminalPair target_;
  bench::FileDescriptor benchsTarget_;
  std::string place_;
  std::string testSetPlace_;
  bench::FileDescriptor listener_;
  bench::FileDescriptor station_;
  bench::FileDescriptor testSet_;
  std::deque<Held> held_;
  Clock::time_point readyAt_{};
  Clock::time_point repliedAt_{};
  std::vector<double> gapsUs_;
  int readings_ = 0;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace orvane::test
