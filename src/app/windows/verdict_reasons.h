#pragma once

#include <QLabel>

#include "state/run_report.h"

namespace orvane {

/// Beneath a verdict, in words that wrap: after a FAIL the steps that were not completed and what is to be done;
/// after either one the readings that lie outside their limits. Nothing where there is nothing to say.
class VerdictReasons final : public QLabel {
 public:
  enum class Of { Fail, Pass };
  VerdictReasons(Of verdict, RunReport& report, QWidget* parent);

 private:
  void Look();

  Of verdict_;
  const RunReport& report_;
};

}  // namespace orvane
