#pragma once

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <functional>

#include "app/stations/station_sight.h"

namespace orvane {

/// One station as it is seen from three metres: which, what it does, what its last unit came to. Touching it asks for
/// its own page; where its process has ended, its button asks for another one.
class StationTile final : public QFrame {
 public:
  /// Counted from 1: the key that touches it.
  explicit StationTile(int number, QWidget* parent = nullptr);

  void Show(const StationSight& sight);

  std::function<void()> onTouched = [] {};
  std::function<void()> onStartAgain = [] {};

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLabel* AddLabel(const char* name, double size, bool isBold);
  void Colour(const StationSight& sight);

  int number_;
  QLabel* name_;
  QLabel* unit_;
  QLabel* state_;
  QProgressBar* progress_;
  QLabel* words_;
  QPushButton* again_;
  QLabel* shift_;
};

}  // namespace orvane
