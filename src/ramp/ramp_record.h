#pragma once

#include "state/ramp_state.h"
#include "state/rf_parameter.h"

namespace orvane {

/// Tables of the first band; the others are the second band's, from its table 0 on.
inline constexpr int kFirstBandRampTables = 15;

/// Copies one table, or all, into the record as numbers, value after value,
/// each up value with the down value of its place.
/// @throws StationFailure at the first text that is no number; what stands before it is copied.
void CopyRampTableToRFParams(const RampState& state, int table, RFParameter& record);
void CopyRampTablesToRFParams(const RampState& state, RFParameter& record);

}  // namespace orvane
