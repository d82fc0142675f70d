#pragma once

#include <QWidget>

#include "state/rf_parameter.h"

namespace orvane {

/// The correction codes of the channel segments over the channels, as they stand in the record.
[[nodiscard]] QWidget* MakeChannelCodesView(const RFParameter& record, QWidget* parent);

}  // namespace orvane
