#pragma once

#include "app/json_rpc.h"
#include "platform/controls.h"
#include "platform/operator.h"

namespace orvane {

/// The acts of the automation port on one control, as an operator's: each raises the events that the same act by hand
/// raises. They throw RpcFailure for an act that does not fit the kind, for a disabled control, for a value that the
/// control has not, and for a failure that stopped the operation.

/// Exactly one of `text`, `select`, `checked`, `value`.
void ActSet(Operator& hand, Control& control, const Json& params);
/// The characters of `keys`, one key press each.
void ActKeys(Operator& hand, Control& control, std::string_view keys);
void ActClick(Operator& hand, Control& control);

/// The failure that stopped an operation, if one did, as an error.
void ThrowIfStopped(const Operator::Outcome& outcome);

}  // namespace orvane
