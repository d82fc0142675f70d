#include "app/stations/desk_plan.h"

#include <CLI/CLI.hpp>
#include <array>
#include <filesystem>

#include "app/desk.h"
#include "app/route_text.h"

namespace orvane {
namespace {

EndAtOnce Fault(const std::string& text) { return {kBadOptions, "orvane-desk: " + text}; }

}  // namespace

std::variant<DeskOptions, EndAtOnce> ParseDeskLine(int argc, const char* const* argv) {
  DeskOptions options;
  std::string theme;
  CLI::App app("The stations of one computer on one screen", "orvane-desk");
  app.set_version_flag("--version", std::string("orvane-desk ") + ORVANE_VERSION);
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.add_option("PROFILE", options.profiles, "Profile of a station, as orvane --profile takes it; one to eight");
  app.add_option("--theme", theme, "Colours of the desk [the desktop's]")
      ->type_name("light|dark")
      ->check(CLI::IsMember({"light", "dark"}));
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return EndAtOnce{0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return EndAtOnce{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& fault) {
    return Fault(OneLine(fault.what()));
  }
  if (options.profiles.empty()) return Fault("It takes the profiles of one to eight stations, and was given none.");
  if (options.profiles.size() > kMostStations) {
    return Fault("It takes the profiles of one to eight stations, and was given " +
                 std::to_string(options.profiles.size()) + ".");
  }
  if (!theme.empty()) options.theme = theme == "light" ? Theme::Light : Theme::Dark;
  return options;
}

PlannedStation PlanStation(const std::string& program, const std::string& profile, int number, const QString& folder,
                           const MachineDefaults& machine) {
  PlannedStation station;
  station.socket = folder + "/" + QString::number(number);
  station.command = {QString::fromStdString(program), "--profile", QString::fromStdString(profile), "--automation",
                     "unix:" + station.socket};
  const std::array<const char*, 3> words{"orvane", "--profile", profile.c_str()};
  const auto parsed = ParseCommandLine(static_cast<int>(words.size()), words.data(), machine);
  const auto* options = std::get_if<Options>(&parsed);
  station.name = QString::fromStdString(std::filesystem::path(profile).stem().string());
  if (options != nullptr && options->Given("station")) station.name = QString::fromStdString(options->station);
  // What is wrong with a profile its station says, whatever else it is told.
  if (options == nullptr || options->headless) return station;
  station.command << "--view"
                  << "operator"
                  << "--desk" << QString::number(number) + "@" + folder + "/desk";
  return station;
}

}  // namespace orvane
