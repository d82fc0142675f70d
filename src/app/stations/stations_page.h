#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/stations/station_tile.h"
#include "app/stations/supervised_station.h"

namespace orvane {

/// All stations of the desk on one screen, a tile each. The keys 1 to 8 touch them.
class StationsPage final : public QWidget {
 public:
  /// The stations outlive it.
  explicit StationsPage(const std::vector<SupervisedStation*>& stations, QWidget* parent = nullptr);

  [[nodiscard]] StationTile& TileOf(std::size_t station) { return *tiles_.at(station); }

  /// Whether the page may go, and its stations with it, while runs are under way: asks whoever is before it.
  std::function<bool(int runs)> mayEnd;

  /// The own page of a station is asked for.
  std::function<void(std::size_t station)> onTouched = [](std::size_t) {};
  std::function<void()> onClosed = [] {};

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddTile(SupervisedStation& station);
  void Touch(std::size_t station);
  void Show(std::size_t station);
  [[nodiscard]] int RunsUnderWay() const;

  std::vector<SupervisedStation*> stations_;
  std::vector<StationTile*> tiles_;
};

}  // namespace orvane
