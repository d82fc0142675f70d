#pragma once

#include <optional>
#include <string_view>

#include "app/automation/json_rpc.h"
#include "state/station_state.h"

namespace orvane {

/// The value of one piece of station-wide state under its name; no value for a name that is none.
/// Flags are booleans, numbers numbers, texts strings, arrays arrays; `RFParams` is an object from label to value in
/// the order of a parameter file, with `rf_revision` as its code.
[[nodiscard]] std::optional<Json> ReadState(const StationState& state, std::string_view name);

/// All that is plain: no records, tables and images. By name.
[[nodiscard]] Json ReadPlainStates(const StationState& state);
/// Takes up what was read so. What is not named stays as it is. @throws Json::exception for a value of another form.
void WritePlainStates(const Json& values, StationState& state);

}  // namespace orvane
