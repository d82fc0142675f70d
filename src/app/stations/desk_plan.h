#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/command_line.h"

namespace orvane {

inline constexpr std::size_t kMostStations = 8;

/// What the command line of `orvane-desk` says.
struct DeskOptions {
  std::vector<std::string> profiles;
  std::optional<Theme> theme;
};

/// One to eight profiles. No more than that is looked at here: what is wrong with one of them its station says.
[[nodiscard]] std::variant<DeskOptions, EndAtOnce> ParseDeskLine(int argc, const char* const* argv);

/// What one station of the desk is called, and how it is started.
struct PlannedStation {
  QString name;
  QStringList command;
  /// Of its automation port.
  QString socket;
};

/// `number` counts from 1, `folder` is the desk's own, with its socket `desk` in it. A profile that is headless
/// has no page.
[[nodiscard]] PlannedStation PlanStation(const std::string& program, const std::string& profile, int number,
                                         const QString& folder, const MachineDefaults& machine);

}  // namespace orvane
