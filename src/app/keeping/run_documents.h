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
  /// @param verifiesEeprom whether the station reads back what it saves to a Target
  RunDocuments(const StationState& state, StationPanels& panels, bool verifiesEeprom)
      : state_(state), panels_(panels), verifiesEeprom_(verifiesEeprom) {}

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
  bool verifiesEeprom_;
  /// What a run ends with the next one begins with, as a rule.
  RFParameter told_{};
  std::string text_;
};

}  // namespace orvane
