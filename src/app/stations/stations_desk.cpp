#include "app/stations/stations_desk.h"

#include <QDir>
#include <algorithm>
#include <iostream>

#include "app/route_text.h"

namespace orvane {
namespace {

/// The names of sockets are short; a folder for temporary files that is deep has no room for them.
QString FolderPattern() {
  constexpr qsizetype kRoom = 60;
  const QString usual = QDir::tempPath();
  return (usual.toUtf8().size() <= kRoom ? usual : QString("/tmp")) + "/orvane-desk-XXXXXX";
}

}  // namespace

StationsDesk::StationsDesk(const std::string& program, const std::vector<std::string>& profiles,
                           const MachineDefaults& machine)
    : folder_(FolderPattern()) {
  if (!folder_.isValid() || !server_.Listen(folder_.filePath("desk"))) {
    throw OptionFault("there is no place for the stations' sockets: " + folder_.path().toStdString());
  }
  std::vector<SupervisedStation*> seen;
  for (const std::string& profile : profiles) {
    const int number = static_cast<int>(stations_.size()) + 1;
    const auto plan = [program, profile, number, folder = folder_.path(), machine] {
      return PlanStation(program, profile, number, folder, machine);
    };
    auto& station = *stations_.emplace_back(std::make_unique<SupervisedStation>(plan));
    station.onEnded = [this] { TellIfAllEnded(); };
    station.onSaid = [&station](const QString& line) {
      std::cerr << station.Sight().name.toStdString() << ": " << line.toStdString() << std::endl;
    };
    seen.push_back(&station);
  }
  page_ = std::make_unique<StationsPage>(seen);
  page_->onTouched = [this](std::size_t station) { (void)server_.BringToFront(static_cast<int>(station) + 1); };
  page_->onClosed = [this] { Stop(); };
  server_.onDeskAskedFor = [this] {
    page_->raise();
    page_->activateWindow();
  };
}

StationsDesk::~StationsDesk() = default;

void StationsDesk::Start() {
  for (const auto& station : stations_) station->Start();
}

void StationsDesk::Stop() {
  isStopping_ = true;
  for (const auto& station : stations_) station->Stop();
  TellIfAllEnded();
}

void StationsDesk::TellIfAllEnded() {
  const bool anyRuns =
      std::any_of(stations_.begin(), stations_.end(), [](const auto& station) { return station->Runs(); });
  if (isStopping_ && !anyRuns) onEnded();
}

}  // namespace orvane
