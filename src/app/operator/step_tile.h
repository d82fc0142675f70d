#pragma once

#include <QCoreApplication>
#include <QFrame>
#include <QLabel>

#include "app/operator/step_clock.h"

namespace orvane {

/// One step of a run: its name, what is going on in it, how long it took and how it ended, by words and by a mark.
class StepTile final : public QFrame {
  Q_DECLARE_TR_FUNCTIONS(StepTile)

 public:
  StepTile(RunStep step, bool isDark, QWidget* parent);

  /// @param goesOn what is going on in it, where it is under way
  void Show(const StepClock::Step& step, TimePoint took, const QString& goesOn);

 private:
  RunStep step_;
  bool isDark_;
  StepClock::State shown_ = StepClock::State::Waiting;
  QLabel* mark_;
  QLabel* name_;
  QLabel* words_;
  QLabel* time_;
};

/// "2.3 s", "1:07 min"
[[nodiscard]] QString TookWords(TimePoint span);

}  // namespace orvane
