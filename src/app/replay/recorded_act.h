#pragma once

#include <string_view>
#include <vector>

#include "platform/operator.h"
#include "platform/panel.h"

namespace orvane {

/// An operator's act as a record tells of it, the control, how, and with what, each on a line: does it once more.
/// @return whether there is such an act, and the control took it.
[[nodiscard]] bool DoRecordedAct(Operator& hand, OperationNest& nest, const std::vector<Panel*>& panels,
                                 std::string_view act);

}  // namespace orvane
