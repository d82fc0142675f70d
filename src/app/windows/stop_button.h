#pragma once

#include <QTimer>
#include <QToolButton>
#include <functional>

#include "app/station_status.h"

namespace orvane {

/// Stop where every operator sees it, on a key from every window: while a run is under way it says what a stop will
/// do at this point, or that one is asked for.
class StopButton final : public QToolButton {
 public:
  /// @param press presses the station's own Stop
  StopButton(const StationStatus& status, std::function<void()> press, QWidget* parent);

  /// Looks now.
  void Look();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const StationStatus& status_;
  std::function<void()> press_;
  QTimer timer_;
};

}  // namespace orvane
