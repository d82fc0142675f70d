#include "app/stations/stations_page.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <algorithm>

namespace orvane {
namespace {

using Stands = StationSight::Stands;

/// As wide as a screen is, and never one tile too many in a row.
std::size_t ColumnsOf(std::size_t stations) {
  constexpr std::size_t kOneRow = 3;
  return stations <= kOneRow ? stations : (stations + 1) / 2;
}

}  // namespace

StationsPage::StationsPage(const std::vector<SupervisedStation*>& stations, QWidget* parent)
    : QWidget(parent), stations_(stations) {
  setWindowTitle(tr("Stations"));
  mayEnd = [this](int runs) {
    const QString which = runs == 1 ? tr("A run is under way.") : tr("%1 runs are under way.").arg(runs);
    return QMessageBox::question(this, windowTitle(),
                                 which + " " + tr("What is ended now is not calibrated. End?")) == QMessageBox::Yes;
  };
  new QGridLayout(this);
  for (SupervisedStation* station : stations_) AddTile(*station);
}

void StationsPage::AddTile(SupervisedStation& station) {
  const std::size_t index = tiles_.size();
  auto* tile = new StationTile(static_cast<int>(index) + 1, this);
  tiles_.push_back(tile);
  auto* grid = static_cast<QGridLayout*>(layout());
  const auto columns = ColumnsOf(stations_.size());
  const auto row = static_cast<int>(index / columns);
  const auto column = static_cast<int>(index % columns);
  grid->addWidget(tile, row, column);
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(column, 1);
  station.onChanged = [this, index] { Show(index); };
  tile->onTouched = [this, index] { Touch(index); };
  tile->onStartAgain = [&station] { station.Start(); };
  Show(index);
}

void StationsPage::Show(std::size_t station) { tiles_[station]->Show(stations_[station]->Sight()); }

/// A station that is not there has no page.
void StationsPage::Touch(std::size_t station) {
  tiles_[station]->setFocus();
  if (stations_[station]->Runs()) onTouched(station);
}

void StationsPage::keyPressEvent(QKeyEvent* event) {
  const auto number = static_cast<std::size_t>(event->key() - Qt::Key_1);
  if (event->key() >= Qt::Key_1 && number < tiles_.size()) {
    Touch(number);
  } else {
    QWidget::keyPressEvent(event);
  }
}

int StationsPage::RunsUnderWay() const {
  return static_cast<int>(std::count_if(stations_.begin(), stations_.end(), [](const SupervisedStation* station) {
    return station->Sight().stands == Stands::InRun;
  }));
}

void StationsPage::closeEvent(QCloseEvent* event) {
  const int runs = RunsUnderWay();
  event->setAccepted(runs == 0 || mayEnd(runs));
  if (event->isAccepted()) onClosed();
}

}  // namespace orvane
