#pragma once

#include "app/station.h"
#include "records/recorded_files.h"
#include "records/recorded_wires.h"
#include "records/run_recorder.h"

namespace orvane {

/// A station's world with a recorder that hears all of it. It outlives the station, as the world does.
struct RecordedPorts {
  explicit RecordedPorts(const StationPorts& plain)
      : recorder(plain.loop),
        line(plain.mscomTarget, recorder),
        bus(plain.bus, recorder),
        desk(plain.boxes, plain.dialogs, recorder),
        files(plain.files, recorder) {}

  [[nodiscard]] StationPorts Ports() { return {recorder.Loop(), line, bus, files, desk, desk}; }

  RunRecorder recorder;
  RecordedSerial line;
  RecordedBus bus;
  RecordedDesk desk;
  RecordedFiles files;
};

}  // namespace orvane
