#pragma once

#include <functional>
#include <string>

#include "app/automation/json_rpc.h"
#include "platform/controls.h"
#include "platform/operator.h"

namespace orvane {

/// The acts of the automation port on one control, as an operator's: each raises the events that the same act by hand
/// raises. To prepare one touches nothing and throws RpcFailure for parameters that are none and for an act that does
/// not fit the kind. The act itself throws it for a disabled control, for a value that the control has not, and for a
/// failure that stopped the operation.
using Act = std::function<void()>;

/// Exactly one of `text`, `select`, `checked`, `value`.
[[nodiscard]] Act PrepareSet(Operator& hand, Control& control, const Json& params);
/// The characters of `text`, one key press each.
[[nodiscard]] Act PrepareKeys(Operator& hand, Control& control, const Json& params);
[[nodiscard]] Act PrepareClick(Operator& hand, Control& control);

/// The failure that stopped an operation, if one did, as an error.
void ThrowIfStopped(const Operator::Outcome& outcome);

}  // namespace orvane
