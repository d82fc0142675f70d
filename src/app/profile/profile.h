#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "app/option_rows.h"

namespace orvane {

/// A profile that cannot be taken: "FILE:LINE: key: what is wrong", in one line.
class ProfileFault : public std::runtime_error {
 public:
  /// `line` 0: the file as a whole.
  ProfileFault(const std::string& file, long line, const std::string& key, const std::string& what);
};

/// A TOML file of settings. At its top stand options of the command line under their names; `ask_serial` is the usual
/// form, `ask-serial` and `askserial` are the same. `[instrument]` and `[tag]` have what may be repeated, `[tables]`
/// the SHA-256 of installed data files, `[golden_limits]` how far readings of the golden unit may be off, `[panel]`
/// what is set on the panels as the station starts.
struct Profile {
  struct Option {
    const OptionRow* row;
    /// "tag.line", as the file has it.
    std::string key;
    /// In the words of the command line; of flags "true" or "false".
    std::string value;
    long line;
  };

  std::string file;
  /// In the order of the file.
  std::vector<Option> options;
  TableDigests tables;
  GoldenLimits goldenLimits;
  std::vector<PanelSetting> panels;
};

/// A whole one has some hundred lines.
inline constexpr std::uint64_t kLargestProfile = 1 << 20;

/// Values of options are not looked at beyond their type. @throws ProfileFault
[[nodiscard]] Profile ReadProfile(const std::string& file);
/// The same of what stands in it.
[[nodiscard]] Profile ParseProfile(const std::string& file, std::string_view content);

/// The name of an option as a profile has it: "ask_serial".
[[nodiscard]] std::string ProfileKey(std::string_view option);

/// The settings as a profile with a comment for each; what is not set stands there as a comment with its default.
/// Read back, it gives the same. @throws OptionFault for a value that no profile can have.
[[nodiscard]] std::string PrintProfile(const Options& options);

}  // namespace orvane
