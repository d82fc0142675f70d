#pragma once

#include "panels/orvane_main.h"
#include "panels/result_panels.h"
#include "platform/panel.h"

namespace orvane {

/// The result views and the verdict dialogs. They only show: the band runs and the sequencer fill and raise them.
class ResultViews {
 public:
  ResultViews(PanelRef<FrmAutoCalTxResult> txResult, PanelRef<FrmAutoCalRxResult> rxResult, PanelRef<FrmFail> fail,
              PanelRef<FrmFailPass> pass, PanelRef<OrvaneMain> main)
      : txResult_(txResult), rxResult_(rxResult), fail_(fail), pass_(pass), main_(main) {}
  void Connect();

  /// Stand where a save of the results would; nothing calls them.
  void SaveTxResults() {}
  void SaveRxResults() {}

 private:
  PanelRef<FrmAutoCalTxResult> txResult_;
  PanelRef<FrmAutoCalRxResult> rxResult_;
  PanelRef<FrmFail> fail_;
  PanelRef<FrmFailPass> pass_;
  PanelRef<OrvaneMain> main_;
};

}  // namespace orvane
