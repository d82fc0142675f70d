#pragma once

#include <string>
#include <vector>

#include "panels/frm_auto_cal.h"
#include "panels/frm_base_band.h"
#include "panels/frm_mp_auto_cal.h"
#include "panels/orvane_main.h"
#include "state/cal_state.h"
#include "state/ramp_state.h"
#include "state/rf_state.h"
#include "state/run_report.h"
#include "state/test_set_state.h"

namespace orvane {

/// Where the settings of a whole run stand.
struct RunInputSources {
  const OrvaneMain& main;
  const FrmAutoCal& autoCal;
  const FrmMPAutoCal& mpAutoCal;
  const FrmBaseBand& baseBand;
  const CalState& cal;
  const RFState& rf;
  const RampState& ramp;
  const TestSetState& testSet;
};

/// One setting that a whole run reads.
struct RunInput {
  /// As an operator sees it: what stands beside the control on its panel, or the caption of the group that sets it.
  std::string name;
  /// The steps that read it, a bit for each.
  unsigned steps;
  /// Those steps set it themselves ahead of reading it: what it was before them does not matter.
  bool setByStep;
  /// The control, where it is one that an operator changes directly.
  const Control* control;
  std::string value;

  [[nodiscard]] bool ReadBy(RunStep step) const { return (steps & BitOf(step)) != 0; }
  [[nodiscard]] static constexpr unsigned BitOf(RunStep step) { return 1U << static_cast<unsigned>(step); }
};

/// All of them, as they stand now. Whoever lets a run read another control or value adds its row here.
[[nodiscard]] std::vector<RunInput> RunInputsOf(const RunInputSources& sources);

}  // namespace orvane
