#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "adapters/disk_files.h"
#include "adapters/gpib/gpib_routes.h"
#include "adapters/gpib/long_waits.h"
#include "adapters/qt_event_loop.h"
#include "adapters/qt_serial_control.h"
#include "app/command_line.h"
#include "app/desk.h"
#include "app/recorded_ports.h"
#include "app/sharing/shared_bus.h"
#include "app/station.h"
#include "app/trace/traced_bus.h"
#include "app/trace/traced_serial.h"
#include "bench/virtual_bench.h"

namespace orvane {

/// The world that the program's station stands in: this machine's devices, or a bench in their place.
class World {
 public:
  /// @throws bench::BenchOptionError when the bench's store cannot be used, TraceFault when the trace cannot be
  /// written.
  explicit World(const Options& options);

  [[nodiscard]] StationPorts Ports();
  /// Who gathers the records of the runs; null where none are kept.
  [[nodiscard]] RunRecorder* Recorder() { return recorded_ ? &recorded_->recorder : nullptr; }
  /// From now on a device that vanishes ends what the station is doing, with a box that says so; and the trace has
  /// every failure that stops an operation.
  void Watch(OperationNest& nest);
  /// Instruments that other stations use too are given back behind what the station does with them, and its state
  /// says what it waits for.
  void Share(Station& station);
  /// It has started. Until then it waits for nothing: its greeting, which resets the test set, is left out where
  /// another station measures with that.
  void StationIsUp() { isUp_ = true; }
  /// How long was waited for such instruments since this was asked last.
  [[nodiscard]] TimePoint TakeWaited() { return shared_ ? shared_->TakeWaited() : TimePoint{0}; }

  /// The instruments that keep the station waiting.
  [[nodiscard]] LongWaits& Waits() { return waits_; }

  /// The bus that the instruments hang on, or the bench's, with a trace of what passes.
  [[nodiscard]] GpibBus& Bus();
  /// Leaves what their routes hold for one client only to somebody else.
  void LetBusGo() { bus_.LetGo(); }

  QtEventLoop loop;
  Desk desk;

 private:
  /// The wires between station and world, with a trace of what passes.
  struct TracedWires {
    TracedWires(EventLoop& loop, const std::string& path, SerialControl& plainLine, GpibBus& plainBus);
    Trace trace;
    TracedSerial line;
    TracedBus bus;
  };

  [[nodiscard]] StationPorts PlainPorts() { return {loop, Serial(), Bus(), files_, desk, desk}; }
  [[nodiscard]] std::unique_ptr<bench::VirtualBench> MakeBench(const Options& options);
  [[nodiscard]] SerialControl& Serial();

  DiskFiles files_;
  QtSerialControl line_;
  LongWaits waits_;
  RoutedGpibBus bus_;
  std::unique_ptr<bench::VirtualBench> bench_;
  WaitedBus waitedBus_;
  std::optional<TracedWires> traced_;
  std::optional<RecordedPorts> recorded_;
  /// Outermost: what a message waits for its instrument is no time of that instrument.
  std::optional<SharedBus> shared_;
  bool isUp_ = false;
  /// Since the last button.
  bool hasRun_ = false;
};

}  // namespace orvane
