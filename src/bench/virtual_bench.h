#pragma once

#include <functional>
#include <memory>
#include <string>

#include "bench/bench.h"
#include "platform/event_loop.h"
#include "platform/gpib.h"
#include "platform/serial_control.h"
#include "platform/virtual_event_loop.h"

namespace orvane::bench {

/// The bench inside the station's own process: a serial control and a GPIB bus that stand for real ones. On a
/// virtual loop it is repeatable to the byte from its seed; on a real one it keeps the line's pace.
class VirtualBench {
 public:
  /// How time passes in a call that blocks and serves nothing.
  using Block = std::function<void(TimePoint span)>;

  /// @throws BenchOptionError when the store cannot be used.
  VirtualBench(EventLoop& loop, Block block, const BenchOptions& options = {});
  VirtualBench(VirtualEventLoop& loop, const BenchOptions& options = {})
      : VirtualBench(
            loop, [&loop](TimePoint span) { loop.Block(span); }, options) {}
  VirtualBench(const VirtualBench&) = delete;
  VirtualBench& operator=(const VirtualBench&) = delete;
  ~VirtualBench();

  /// The Target's line. Bytes travel at 115200 baud, whatever the settings say.
  [[nodiscard]] SerialControl& Serial();
  [[nodiscard]] GpibBus& Bus();

  /// The models, for a look at what the Target keeps and at the counters.
  [[nodiscard]] const Bench& Models() const { return models_; }

  /// The next unit under test, see `Bench::Insert`. The instruments keep their places.
  void Insert(const BenchOptions& options) { models_.Insert(options); }

 private:
  class Line;
  class Bus488;
  class Session;

  Bench models_;
  std::shared_ptr<Line> line_;
  std::unique_ptr<Bus488> bus_;
};

}  // namespace orvane::bench
