#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_serial_control.h"
#include "bench/options.h"

namespace orvane {

struct NoAutomation {};
struct StdioAutomation {};
struct UnixAutomation {
  std::string path;
};

/// A light or a dark screen, whatever the desktop is set to.
enum class Theme { Light, Dark };

/// What the command line says. Nothing of it reaches the station's own logic: it says which device stands for which
/// port, and who presses the buttons.
struct Options {
  /// In place of all devices.
  std::optional<bench::BenchOptions> bench;
  ComDevices com{"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"};
  GpibRoutes gpib;
  std::optional<std::filesystem::path> systemFolder;
  std::optional<std::filesystem::path> tempFolder;
  std::variant<NoAutomation, StdioAutomation, UnixAutomation> automation;
  /// Where all that goes over the wires is written down.
  std::optional<std::string> trace;
  /// A trace to tell, in place of running a station.
  std::optional<std::string> explain;
  std::optional<Theme> theme;
  bool headless = false;
  bool initialize = false;
  /// Tell what is there, and end.
  bool list = false;
};

/// The program is to end at once: `--help`, `--version`, or a fault of the options.
struct EndAtOnce {
  int status = 0;
  /// On standard output for status 0, else one line for standard error.
  std::string text;
};

inline constexpr int kBadOptions = 64;
/// `--explain` of something that is no trace, and of nothing.
inline constexpr int kNotThatInput = 65;
inline constexpr int kNoInput = 66;

[[nodiscard]] std::variant<Options, EndAtOnce> ParseCommandLine(int argc, const char* const* argv);

}  // namespace orvane
