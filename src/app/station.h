#pragma once

#include <memory>

#include "panels/station_panels.h"
#include "platform/boxes.h"
#include "platform/event_loop.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/gpib.h"
#include "platform/operation_nest.h"
#include "platform/serial_control.h"
#include "state/station_state.h"
#include "state/table_digests.h"

namespace orvane {

/// The world that a station stands in. All of it outlives the station.
struct StationPorts {
  EventLoop& loop;
  SerialControl& mscomTarget;
  GpibBus& bus;
  Files& files;
  Boxes& boxes;
  FileDialogs& dialogs;
};

/// What a station does beyond what it does for everybody.
struct StationWishes {
  /// Of installed data files: a run that stands on another content is not complete.
  TableDigests tables{};
  /// Needed where a table has a digest.
  DigestOf digestOf{};
  /// Behind a save to the Target's EEPROM it is read back and compared.
  bool verifyEeprom = false;
  /// The supply's output and the load's input are switched off behind its back: a load that is initialized is
  /// switched on.
  bool safeOff = false;
};

/// One station: its state, its panels and the operations behind them. Two stations in one process do not know each
/// other.
class Station {
 public:
  explicit Station(const StationPorts& ports, const StationWishes& wishes = {});
  ~Station();
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;

  /// Shows the main panel, whose load brings the station up. Files that are missing cost their boxes; it stays up.
  void Start();

  /// Somebody else speaks to the supply and the load: both have to be initialized before they are used again.
  void LetBenchGo();

  [[nodiscard]] StationState& State() { return state_; }
  [[nodiscard]] StationPanels& Panels() { return panels_; }
  [[nodiscard]] OperationNest& Nest() { return nest_; }

 private:
  struct Operations;

  StationState state_;
  StationPanels panels_;
  OperationNest nest_;
  std::unique_ptr<Operations> operations_;
};

}  // namespace orvane
