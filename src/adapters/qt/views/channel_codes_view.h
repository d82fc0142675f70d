#pragma once

#include <QWidget>

#include "state/rf_parameter.h"
#include "state/run_report.h"

namespace orvane {

/// The correction codes of the channel segments over the channels, as they stand in the record. In a
/// run, from where they are this unit's.
[[nodiscard]] QWidget* MakeChannelCodesView(const RFParameter& record, RunReport& report, QWidget* parent);

}  // namespace orvane
