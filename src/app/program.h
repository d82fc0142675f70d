#pragma once

#include <memory>
#include <optional>
#include <variant>

#include "app/automation_port.h"
#include "app/automation_transport.h"
#include "app/command_line.h"
#include "app/narrator.h"
#include "app/station.h"
#include "app/world.h"

namespace orvane {

/// How `--initialize` ends the program.
enum ExitStatus : int { kPassed = 0, kFailed = 1, kUndecided = 2 };

/// One station in its world, with the front ends that the command line asks for. It needs a QCoreApplication.
class Program {
 public:
  /// @throws OptionFault, naming the option, when the bench's store or the automation port's path cannot be used;
  /// TraceFault when the trace cannot be written.
  explicit Program(const Options& options);

  [[nodiscard]] Station& TheStation() { return station_; }
  [[nodiscard]] World& TheWorld() { return world_; }
  [[nodiscard]] const Options& TheOptions() const { return options_; }

  /// Starts the station and serves it until it ends. @return the exit status.
  [[nodiscard]] int Run();

 private:
  void OpenAutomation();
  void Serve();
  void PressInitialize();
  [[nodiscard]] int VerdictStatus();

  Options options_;
  World world_;
  Station station_;
  AutomationPort port_;
  std::optional<Narrator> narrator_;
  std::variant<std::monostate, std::unique_ptr<StdioTransport>, std::unique_ptr<UnixSocketTransport>> transport_;
};

}  // namespace orvane
