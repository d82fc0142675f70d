#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/qt_serial_control.h"
#include "app/golden/golden_options.h"
#include "app/profile/panel_settings.h"
#include "app/sharing/shared_instruments.h"
#include "app/unit_identity.h"
#include "bench/options.h"
#include "state/table_digests.h"

namespace orvane {

struct NoAutomation {};
struct StdioAutomation {};
struct UnixAutomation {
  std::string path;
};

/// A light or a dark screen, whatever the desktop is set to.
enum class Theme { Light, Dark };

/// What stands on the screen: the engineers' panels, or one page for the operator.
enum class View { Panels, Operator };
/// Of the operator's page; the panels have their own texts.
enum class Language { English, Korean };

/// What the operator's page goes by.
struct OperatorWishes {
  std::optional<Language> language{};
  /// What a serial number looks like, as a Perl regular expression that all of it fits; empty where any will do.
  std::string serialPattern{};
  /// When the shifts begin, in minutes of the day; none: at midnight.
  std::vector<int> shiftStarts{};
  /// After so many days the cables' losses count as old; no value: never.
  std::optional<int> lossesDays{};
};

/// What the command line and the profile say. Little of it reaches the station's own logic: it says which device
/// stands for which port, and who presses the buttons.
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
  View view = View::Panels;
  OperatorWishes operating;
  bool headless = false;
  bool initialize = false;
  /// Tell what is there, and end.
  bool list = false;
  /// Of that list.
  bool json = false;

  /// The SQLite store that records of runs go to; no value: none are kept.
  std::optional<std::filesystem::path> records;
  /// The name of this station in its records.
  std::string station;
  UnitTexts unit;
  /// No run begins without a serial number.
  bool askSerial = false;
  /// Read back what a save wrote to the Target's EEPROM.
  bool verifyEeprom = false;
  /// Switch supply and load off behind a run without PASS, and at the station's end.
  bool safeOff = false;
  GoldenOptions golden;

  /// What tells the engineer's word from any other; empty: there is none.
  std::string engineerSecret;
  /// Make one of a word, and end.
  bool makeEngineerSecret = false;

  SharedInstruments share;
  /// Of a station that orvane-desk has started: `NUMBER@SOCKET`.
  std::optional<std::string> desk;

  /// The SHA-256 that installed data files have to have, by name.
  TableDigests tables;
  /// What is set on the panels as the station starts.
  std::vector<PanelSetting> panels;

  /// Tell the settings as a profile, and end.
  bool printProfile = false;
  /// Each option that was given, by its name without dashes, in the words it was given in; flags as "true".
  /// Those of the profile are among them.
  std::vector<std::pair<std::string, std::string>> given;

  /// Of an option that is given once; no value when it was not.
  [[nodiscard]] std::optional<std::string> Given(std::string_view name) const;
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

/// What options stand on that are not given.
struct MachineDefaults {
  /// Where this user's programs keep their settings, and what they have to remember; empty where nobody knows.
  std::filesystem::path configFolder;
  std::filesystem::path stateFolder;
  std::string hostName;
};
/// By XDG_CONFIG_HOME and XDG_STATE_HOME, or else below HOME.
[[nodiscard]] MachineDefaults DefaultsOfThisMachine();

/// Reads the profile too, if there is one to be read.
[[nodiscard]] std::variant<Options, EndAtOnce> ParseCommandLine(int argc, const char* const* argv,
                                                                const MachineDefaults& machine = {});

}  // namespace orvane
