#pragma once

#include <QWidget>

#include "state/rf_parameter.h"

namespace orvane {

/// The receive compensations of the three bands over their channels, as they stand in the record, and between which
/// values those of a sound receiver lie.
[[nodiscard]] QWidget* MakeCompensationView(const RFParameter& record, QWidget* parent);

}  // namespace orvane
