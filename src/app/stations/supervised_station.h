#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "app/stations/desk_plan.h"
#include "app/stations/station_client.h"
#include "app/stations/station_process.h"
#include "app/stations/station_sight.h"

namespace orvane {

/// One station of the desk: its process, what its port tells, and what is seen of both.
class SupervisedStation final : public QObject {
 public:
  /// `plan` is asked ahead of each start: its profile may be another one by then. The socket stays.
  explicit SupervisedStation(std::function<PlannedStation()> plan, QObject* parent = nullptr);

  void Start();
  void Stop() { process_.Stop(); }
  [[nodiscard]] bool Runs() const { return process_.Runs(); }
  [[nodiscard]] const StationSight& Sight() const { return sight_; }

  /// It is to be shown anew.
  std::function<void()> onChanged = [] {};
  std::function<void()> onEnded = [] {};
  std::function<void(const QString& line)> onSaid = [](const QString&) {};

 private:
  void Welcome();
  void Look();
  void LookForTheBox();
  void AskForTheUnit();

  std::function<PlannedStation()> plan_;
  StationProcess process_;
  StationClient client_;
  StationSight sight_;
  QTimer look_;
};

}  // namespace orvane
