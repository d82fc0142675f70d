#pragma once

#include <QWidget>

#include "state/rf_parameter.h"
#include "state/run_report.h"

namespace orvane {

/// The receive compensations of the three bands over their channels, as they stand in the record, and between which
/// values those of a sound receiver lie. In a run, from where they are this unit's.
[[nodiscard]] QWidget* MakeCompensationView(const RFParameter& record, RunReport& report, QWidget* parent);

}  // namespace orvane
