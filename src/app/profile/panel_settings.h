#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "panels/station_panels.h"
#include "platform/operation_nest.h"

namespace orvane {

/// A value that a control is given as the station starts.
struct PanelSetting {
  /// Name of its row.
  std::string name;
  /// As the control shows it; of what is on or off, "true" or "false".
  std::string text;
  /// Where it was said, to be told: "/etc/bench.toml:12".
  std::string where;
};

/// What a bench needs on the panels at each start: one setting, and the operator's act that it stands for.
struct PanelRow {
  enum class Type { Word, Whole, Decimal, Switch };
  /// A word, and the option that an operator clicks for it.
  struct Choice {
    std::string_view word;
    OptionButton& (*option)(StationPanels& panels);
  };

  std::string_view name;
  std::string_view means;
  Type type;
  /// The text or combo box, or the check box; null where there are choices.
  Control& (*control)(StationPanels& panels);
  /// What the control has as the station starts.
  std::string_view usual;
  /// Of numbers that are typed.
  double least = 0;
  double most = 0;
  std::vector<Choice> choices{};

  /// What is wrong with a value of the row's type; no value when nothing is.
  [[nodiscard]] std::optional<std::string> FaultOf(const std::string& text) const;
};

/// In the order in which they are applied.
[[nodiscard]] std::span<const PanelRow> PanelRows();
/// No such row: null.
[[nodiscard]] const PanelRow* FindPanelRow(std::string_view name);

/// Acts as an operator for each of the settings, in the order of the rows. `tell` hears of each act that was refused
/// or whose value the station did not keep.
void Apply(const std::vector<PanelSetting>& settings, StationPanels& panels, OperationNest& nest,
           const std::function<void(const std::string& text)>& tell);

}  // namespace orvane
