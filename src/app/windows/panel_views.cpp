#include "app/windows/panel_views.h"

#include "adapters/qt/views/channel_codes_view.h"
#include "adapters/qt/views/compensation_view.h"
#include "adapters/qt/views/ramp_shape_view.h"
#include "adapters/qt/views/search_view.h"
#include "app/windows/pace_time.h"
#include "app/windows/verdict_reasons.h"
#include "panels/frm_auto_cal.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/frm_ramp_table.h"
#include "panels/orvane_main.h"
#include "panels/result_panels.h"

namespace orvane {

QWidget* MakePanelView(Panel& panel, std::string_view name, StationState& state, EventLoop& loop, QWidget* parent) {
  if (auto* main = dynamic_cast<OrvaneMain*>(&panel); main != nullptr && name == "paceTime") {
    return MakePaceTime(main->txtSyncDelay, loop, parent);
  }
  if (name == "rampShape") {
    if (auto* main = dynamic_cast<OrvaneMain*>(&panel)) return MakeRampShapeView(main->ramp, parent);
    if (auto* dialog = dynamic_cast<FrmRampTable*>(&panel)) return MakeRampShapeView(dialog->editor, parent);
  }
  if (name == "verdictReasons") {
    const bool isFail = dynamic_cast<FrmFail*>(&panel) != nullptr;
    return new VerdictReasons(isFail ? VerdictReasons::Of::Fail : VerdictReasons::Of::Pass, state.report, parent);
  }
  if (name == "searchConvergence") return MakeSearchView(state.searchTrail, parent);
  if (name == "channelCodes") return MakeChannelCodesView(state.rf.RFParams, state.report, parent);
  if (name == "receiveCompensation") return MakeCompensationView(state.rf.RFParams, state.report, parent);
  return nullptr;
}

}  // namespace orvane
