#include "app/command_line.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cstdlib>

#include "app/desk.h"
#include "app/option_rows.h"
#include "app/profile/profile.h"
#include "app/route_text.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// The value of an option, taken apart and noted. @throws std::exception with what is wrong with it.
void Take(Options& options, const OptionRow& row, const std::string& value) {
  if (value.empty()) throw OptionFault("the value is empty");
  row.take(options, value);
  options.given.emplace_back(row.name, value);
}

/// A flag that is given a value, "no" above all, is a slip and must not count as the flag.
std::string NoValue(const std::string& given) { return given == "true" ? "" : "it takes no value"; }

/// One option; a fault of its value names the option.
CLI::Option* Define(CLI::App& app, const OptionRow& row, Options& options) {
  const std::string name = "--" + row.name;
  const auto takeAll = [name, &row, &options](const CLI::results_t& values) {
    for (const std::string& value : values) {
      try {
        Take(options, row, value);
      } catch (const std::exception& fault) {
        throw CLI::ValidationError(name, fault.what());
      }
    }
    return true;
  };
  if (row.kind == OptionRow::Kind::Flag) {
    return app
        .add_flag_callback(
            name, [&row, &options] { Take(options, row, "true"); }, row.means)
        ->check(&NoValue);
  }
  CLI::Option* option = app.add_option(name, takeAll, row.means)->type_name(row.what)->type_size(1);
  if (row.kind == OptionRow::Kind::Repeated || row.kind == OptionRow::Kind::List) {
    option->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(false);
  }
  return option;
}

void DefineAll(CLI::App& app, Options& options) {
  for (const OptionRow& row : OptionRows()) {
    CLI::Option* option = Define(app, row, options);
    if (row.ofDevices) option->excludes(app.get_option("--bench"));
    if (row.name == "json") option->needs(app.get_option("--list"));
    if (row.name != "list") continue;
    for (const char* runs : kNotWithList) option->excludes(app.get_option("--" + std::string(runs)));
  }
}

/// The file to read: the one that is named, or the user's, which is for real benches. No value for none.
std::optional<std::string> ProfileFile(const Options& options, const MachineDefaults& machine) {
  if (auto named = options.Given("profile")) return named;
  if (options.bench || machine.configFolder.empty()) return std::nullopt;
  const fs::path usual = machine.configFolder / "orvane" / "profile.toml";
  std::error_code unknown;
  return fs::symlink_status(usual, unknown).type() == fs::file_type::not_found || unknown
             ? std::nullopt
             : std::optional(usual.string());
}

/// Settings of the profile where the command line says nothing.
class ProfileTaker {
 public:
  ProfileTaker(Options& options, Profile profile)
      : options_(options), commandLine_(options), profile_(std::move(profile)) {}

  void TakeAll() {
    for (const Profile::Option& option : profile_.options) {
      if (option.value == "false" && option.row->kind == OptionRow::Kind::Flag) continue;
      if (IsOutdone(option)) continue;
      try {
        Take(options_, *option.row, option.value);
      } catch (const std::exception& fault) {
        throw ProfileFault(profile_.file, option.line, option.key, fault.what());
      }
    }
    options_.tables = profile_.tables;
    options_.golden.limits = profile_.goldenLimits;
    options_.panels = profile_.panels;
  }

 private:
  /// The command line has said this, or what it has said leaves no room for it.
  [[nodiscard]] bool IsOutdone(const Profile::Option& option) const {
    const std::string& name = option.row->name;
    if (name == "tag") return commandLine_.unit.tags.contains(ParseTag(option.value).first);
    if (name == "instrument" && IsRouted(option)) return true;
    if (option.row->kind != OptionRow::Kind::Repeated && commandLine_.Given(name)) return true;
    if (commandLine_.list && std::find(kNotWithList.begin(), kNotWithList.end(), name) != kNotWithList.end()) {
      return true;
    }
    if (option.row->ofDevices && commandLine_.bench) return true;
    if (option.row->ofDevices && options_.bench) Fail(option, "there are no devices beside a virtual bench");
    if (name == "bench" && HasDevices(options_)) Fail(option, "there is none beside devices");
    return false;
  }

  [[nodiscard]] bool IsRouted(const Profile::Option& option) const {
    try {
      return commandLine_.gpib.instruments.contains(ParseInstrumentRoute(option.value).first);
    } catch (const OptionFault& fault) {
      Fail(option, fault.what());
    }
  }
  [[nodiscard]] static bool HasDevices(const Options& options) {
    return std::any_of(options.given.begin(), options.given.end(),
                       [](const auto& given) { return FindOptionRow(given.first)->ofDevices; });
  }
  [[noreturn]] void Fail(const Profile::Option& option, const std::string& what) const {
    throw ProfileFault(profile_.file, option.line, option.key, what);
  }

  Options& options_;
  const Options commandLine_;
  Profile profile_;
};

void TakeDefaults(Options& options, const MachineDefaults& machine) {
  if (!options.Given("records") && !options.bench && !machine.stateFolder.empty()) {
    options.records = machine.stateFolder / "orvane" / "records.sqlite";
  }
  if (options.station.empty()) options.station = machine.hostName;
}

/// The folder that a variable names, or else one below the user's home. One that is not absolute does not count.
fs::path UserFolder(const char* variable, const char* belowHome) {
  const auto absolute = [](const char* path) { return path != nullptr && *path == '/'; };
  if (const char* named = std::getenv(variable); absolute(named)) return named;
  const char* home = std::getenv("HOME");
  return absolute(home) ? fs::path(home) / belowHome : fs::path();
}

}  // namespace

std::optional<std::string> Options::Given(std::string_view name) const {
  const auto hit = std::find_if(given.begin(), given.end(), [&](const auto& each) { return each.first == name; });
  return hit == given.end() ? std::nullopt : std::optional(hit->second);
}

MachineDefaults DefaultsOfThisMachine() {
  std::array<char, 256> host{};
  const bool known = ::gethostname(host.data(), host.size() - 1) == 0;
  return {UserFolder("XDG_CONFIG_HOME", ".config"), UserFolder("XDG_STATE_HOME", ".local/state"),
          known ? host.data() : ""};
}

std::variant<Options, EndAtOnce> ParseCommandLine(int argc, const char* const* argv, const MachineDefaults& machine) {
  Options options;
  CLI::App app("Calibration and test station for one dual-band GSM handset", "orvane");
  app.set_version_flag("--version", std::string("orvane ") + ORVANE_VERSION);
  app.set_help_flag("-h,--help", "Print this help and exit");
  DefineAll(app, options);
  try {
    app.parse(argc, argv);
    if (const auto file = ProfileFile(options, machine); file && !options.explain && !options.makeEngineerSecret) {
      ProfileTaker(options, ReadProfile(*file)).TakeAll();
    }
  } catch (const CLI::CallForHelp&) {
    return EndAtOnce{0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return EndAtOnce{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& fault) {
    return EndAtOnce{kBadOptions, "orvane: " + OneLine(fault.what())};
  } catch (const ProfileFault& fault) {
    return EndAtOnce{kBadOptions, std::string("orvane: ") + fault.what()};
  }
  TakeDefaults(options, machine);
  return options;
}

}  // namespace orvane
