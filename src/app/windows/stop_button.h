#pragma once

#include <QTimer>
#include <QToolButton>

#include "adapters/qt/hands.h"
#include "app/station_status.h"
#include "platform/controls.h"

namespace orvane {

/// Stop where every operator sees it, on a key from every window: while a run is under way it says what a stop will
/// do at this point, or that one is asked for. A press that the station has no time for yet is told, too.
class StopButton final : public QToolButton {
 public:
  /// @param stop the station's own
  StopButton(const StationStatus& status, Hands& hands, Button& stop, QWidget* parent);

  /// Looks now.
  void Look();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Press();
  [[nodiscard]] QString Words() const;

  const StationStatus& status_;
  Hands& hands_;
  Button& stop_;
  /// Presses that wait for their turn.
  int pending_ = 0;
  QTimer timer_;
};

}  // namespace orvane
