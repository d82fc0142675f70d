#pragma once

#include "app/automation/json_rpc.h"
#include "app/unit_identity.h"

namespace orvane {

/// The parameters of the method `unit`: any of `serial`, `operator`, `part` (a text, or null for none) and `tags` (an
/// object of such). @throws RpcFailure for another member or another type.
[[nodiscard]] UnitChange UnitChangeOf(const Json& params);

/// The same members, all of them; null for what is not known.
[[nodiscard]] Json UnitObject(const UnitTexts& texts);

}  // namespace orvane
