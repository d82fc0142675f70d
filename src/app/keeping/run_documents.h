#pragma once

#include <string>
#include <vector>

#include "panels/station_panels.h"
#include "records/record.h"
#include "state/station_state.h"

namespace orvane {

/// What a run begins with and what it has made, as documents of its record. It looks and never touches: a panel that
/// nobody has seen stays unseen.
class RunDocuments {
 public:
  RunDocuments(const StationState& state, StationPanels& panels) : state_(state), panels_(panels) {}

  /// What the station knows beside them, and which panels somebody has seen: one JSON object.
  [[nodiscard]] std::string State();
  /// The parameters, the tables, and every control of every panel.
  [[nodiscard]] std::vector<RecordedDocument> Before();
  /// The parameters.
  [[nodiscard]] std::vector<RecordedDocument> After();

 private:
  [[nodiscard]] const std::string& ParameterText();

  const StationState& state_;
  StationPanels& panels_;
  /// What a run ends with the next one begins with, as a rule.
  RFParameter told_{};
  std::string text_;
};

/// Every control of every panel with its value: {"frmAutoCal": {"txtLoss": "-1", ...}, ...}. Of a list it is the row
/// that is selected, of a long text its end.
[[nodiscard]] std::string PanelDocument(const std::vector<Panel*>& panels);

}  // namespace orvane
