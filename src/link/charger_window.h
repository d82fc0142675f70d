#pragma once

#include "base/numbers.h"
#include "panels/frm_base_band.h"
#include "state/reply_state.h"

namespace orvane {

/// Where a sound battery's raw ADC counts lie, both ends included.
struct ChargerWindow {
  Long low;
  Long high;
};
/// At 4.2 V, and at shut-down.
inline constexpr ChargerWindow kCC2CVWindow{619, 631};
inline constexpr ChargerWindow kShutDownWindow{489, 503};

/// Serves the charger run with a raw ADC value: at stage 1 it is the count at 4.2 V (one value is skipped first),
/// otherwise the one at shut-down. A count within its window stands in its box afterwards.
/// @return false for a count outside its window, which is noted in the reply state.
[[nodiscard]] bool PassesChargerWindow(Long value, ReplyState& state, PanelRef<FrmBaseBand> panel);

}  // namespace orvane
