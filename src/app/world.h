#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "adapters/disk_files.h"
#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_event_loop.h"
#include "adapters/qt_serial_control.h"
#include "app/command_line.h"
#include "app/desk.h"
#include "app/recorded_ports.h"
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

  [[nodiscard]] StationPorts Ports() { return recorded_ ? recorded_->Ports() : PlainPorts(); }
  /// Who gathers the records of the runs; null where none are kept.
  [[nodiscard]] RunRecorder* Recorder() { return recorded_ ? &recorded_->recorder : nullptr; }
  /// From now on a device that vanishes ends what the station is doing, with a box that says so; and the trace has
  /// every failure that stops an operation.
  void Watch(OperationNest& nest);
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
  [[nodiscard]] SerialControl& Serial();

  DiskFiles files_;
  QtSerialControl line_;
  RoutedGpibBus bus_;
  std::unique_ptr<bench::VirtualBench> bench_;
  std::optional<TracedWires> traced_;
  std::optional<RecordedPorts> recorded_;
};

}  // namespace orvane
