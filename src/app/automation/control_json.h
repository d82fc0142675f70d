#pragma once

#include "app/automation/json_rpc.h"
#include "platform/controls.h"
#include "platform/panel.h"

namespace orvane {

/// A control as the automation port shows it, under its full name: `frmAutoCal.txtLoss`.
[[nodiscard]] Json ControlObject(const Control& control);
[[nodiscard]] Json PanelObject(const Panel& panel);

}  // namespace orvane
