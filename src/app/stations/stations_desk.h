#pragma once

#include <QObject>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/stations/desk_plan.h"
#include "app/stations/desk_server.h"
#include "app/stations/stations_page.h"
#include "app/stations/supervised_station.h"

namespace orvane {

/// Up to eight stations, each a process of its own, and the page on which all of them are seen.
class StationsDesk final : public QObject {
 public:
  /// `program` is the station's. @throws OptionFault where there is no place for the stations' sockets.
  StationsDesk(const std::string& program, const std::vector<std::string>& profiles, const MachineDefaults& machine);
  ~StationsDesk() override;

  /// Starts all of them.
  void Start();
  /// Ends all that were started. `ended` comes when the last of them has.
  void Stop();

  [[nodiscard]] StationsPage& Page() { return *page_; }
  [[nodiscard]] SupervisedStation& StationAt(std::size_t index) { return *stations_.at(index); }

  std::function<void()> onEnded = [] {};

 private:
  void TellIfAllEnded();

  QTemporaryDir folder_;
  DeskServer server_;
  std::vector<std::unique_ptr<SupervisedStation>> stations_;
  std::unique_ptr<StationsPage> page_;
  bool isStopping_ = false;
};

}  // namespace orvane
