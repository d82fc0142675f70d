#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "adapters/disk_files.h"
#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_event_loop.h"
#include "adapters/qt_serial_control.h"
#include "app/command_line.h"
#include "app/desk.h"
#include "app/station.h"
#include "bench/virtual_bench.h"

namespace orvane {

/// The world that the program's station stands in: this machine's devices, or a bench in their place.
class World {
 public:
  /// @throws bench::BenchOptionError when the bench's store cannot be used.
  explicit World(const Options& options);

  [[nodiscard]] StationPorts Ports() { return {loop, Serial(), Bus(), files_, desk, desk}; }
  /// From now on a device that vanishes ends what the station is doing, with a box that says so.
  void WatchLine(OperationNest& nest);

  QtEventLoop loop;
  Desk desk;

 private:
  [[nodiscard]] SerialControl& Serial();
  [[nodiscard]] GpibBus& Bus();

  DiskFiles files_;
  QtSerialControl line_;
  RoutedGpibBus bus_;
  std::unique_ptr<bench::VirtualBench> bench_;
};

}  // namespace orvane
