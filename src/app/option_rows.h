#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/command_line.h"

namespace orvane {

/// One option of the program, as its help, its command line and a profile have it.
struct OptionRow {
  /// Flags have no value, and a profile has true or false for them. What may be repeated is a table in a profile:
  /// `--tag line=A` is `line = "A"` in `[tag]`. A list has whole numbers: `--share 1 --share 2` is `share = [1, 2]`.
  enum class Kind { Value, Repeated, Flag, List };

  /// Without dashes: "system-dir".
  std::string name;
  Kind kind = Kind::Value;
  /// What its value is, for the help: "PATH".
  std::string what{};
  std::string means{};
  /// @throws std::exception with what is wrong with the value.
  std::function<void(Options&, const std::string& value)> take;
  /// Says how to reach a real device: there is none beside a virtual bench.
  bool ofDevices = false;
  /// No part of a profile: it ends the program, or says which profile.
  bool onCommandLineOnly = false;
};

/// One whose value is a text of a unit, and a flag: as most of them are.
[[nodiscard]] OptionRow TextRow(const char* name, const char* what, const char* means,
                                const std::function<std::string&(Options&)>& text);
[[nodiscard]] OptionRow FlagRow(const char* name, const char* means, bool Options::*flag,
                                bool onCommandLineOnly = false);

/// All of them, in the order of the help.
[[nodiscard]] const std::vector<OptionRow>& OptionRows();
/// No such option: null.
[[nodiscard]] const OptionRow* FindOptionRow(std::string_view name);

/// Options that a list of devices has no use for.
inline constexpr std::array kNotWithList{"bench", "system-dir", "temp-dir", "automation", "initialize"};

}  // namespace orvane
