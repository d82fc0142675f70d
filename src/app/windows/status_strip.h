#pragma once

#include <QLabel>
#include <QLayout>
#include <QProgressBar>
#include <QTimer>
#include <QWidget>

#include "adapters/gpib/long_waits.h"
#include "app/station_status.h"
#include "app/surroundings.h"

namespace orvane {

/// The station's status in one line: where it is, its line to the Target, and how far its run has come. It looks ten
/// times a second, since most of what it shows changes far more often.
class StatusStrip final : public QWidget {
 public:
  StatusStrip(const StationStatus& status, Surroundings surroundings, QWidget* parent);

  /// Puts a field behind the place that the station is in.
  void AddField(QWidget* field);
  /// Puts one behind all others.
  void AddAtEnd(QWidget* field) { layout()->addWidget(field); }
  /// Tells of instruments that keep the station waiting; they live longer than the strip.
  void Follow(const LongWaits& waits) { waits_ = &waits; }
  /// Looks now.
  void Look();

 private:
  [[nodiscard]] QString StageText() const;
  QLabel* Add(QLabel* label, const char* name);
  QProgressBar* AddBar(const char* name, const QString& format);
  void ShowPlace();
  void ShowLink();

  const StationStatus& status_;
  Surroundings surroundings_;
  QLabel* bench_;
  QLabel* place_;
  QLabel* link_;
  QLabel* stage_;
  QLabel* elapsed_;
  QProgressBar* run_;
  QProgressBar* transfer_;
  const LongWaits* waits_ = nullptr;
  /// Looks in a row that found the station waiting for a reply.
  int looksThatWaited_ = 0;
  QTimer timer_;
};

}  // namespace orvane
