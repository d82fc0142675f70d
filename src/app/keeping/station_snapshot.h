#pragma once

#include <string>
#include <string_view>

#include "app/automation/json_rpc.h"
#include "panels/station_panels.h"
#include "platform/gpib.h"
#include "state/station_state.h"

namespace orvane {

/// What a station knows beside what its panels show, its parameters and its tables, as one JSON object; it looks at
/// panels and touches none.
/// @param verifiesEeprom whether it reads back what it saves to a Target
[[nodiscard]] std::string SnapshotText(const StationState& state, StationPanels& panels, bool verifiesEeprom);

/// The same, read back.
class StationSnapshot {
 public:
  /// @throws Json::exception for a text that is none.
  explicit StationSnapshot(std::string_view text) : values_(Json::parse(text)) {}

  [[nodiscard]] bool VerifiesEeprom() const { return values_.at("verifiesEeprom").get<bool>(); }
  /// Whether somebody had seen that panel.
  [[nodiscard]] bool Saw(const Panel& panel) const;
  [[nodiscard]] const Json& Value(std::string_view state) const { return values_.at("state").at(state); }
  /// Where the sessions to the supply and the load were made to.
  [[nodiscard]] GpibAddress SupplyAddress() const;
  [[nodiscard]] GpibAddress LoaderAddress() const;

  /// Puts it into a station whose panels are those. What it knows of its tables' files it keeps where they are
  /// others.
  void TakeUp(StationState& state, StationPanels& panels, bool otherTables) const;

 private:
  Json values_;
};

}  // namespace orvane
