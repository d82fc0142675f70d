#include "link/charger_window.h"

namespace orvane {
namespace {

bool ShowWithin(const ChargerWindow& window, Long value, TextBox& box, ReplyState& state) {
  if (value < window.low || value > window.high) {
    state.RawAdcOutOfWindow = 1;
    return false;
  }
  box.SetText("0x0" + HexText(value));
  return true;
}

}  // namespace

bool PassesChargerWindow(Long value, ReplyState& state, PanelRef<FrmBaseBand> panel) {
  if (state.RawAdcStage != 1) {
    panel->txtShutDownADC.SetText("");
    return ShowWithin(kShutDownWindow, value, panel->txtShutDownADC, state);
  }
  panel->txtCC2CVADC.SetText("");
  if (state.RawAdcSkip != 1) {
    state.RawAdcSkip = CheckedInteger(state.RawAdcSkip + 1);
    return true;
  }
  state.RawAdcStage = 0;
  return ShowWithin(kCC2CVWindow, value, panel->txtCC2CVADC, state);
}

}  // namespace orvane
