#include "app/option_rows.h"

#include <QRegularExpression>
#include <QTime>
#include <algorithm>
#include <sstream>

#include "app/engineer/engineer_rows.h"
#include "app/golden/golden_rows.h"
#include "app/route_text.h"
#include "app/sharing/share_rows.h"

namespace orvane {
namespace {

using Kind = OptionRow::Kind;

void TakeAutomation(Options& options, const std::string& text) {
  constexpr std::string_view kUnix = "unix:";
  if (text == "stdio") {
    options.automation = StdioAutomation{};
  } else if (text.starts_with(kUnix) && text.size() > kUnix.size()) {
    options.automation = UnixAutomation{text.substr(kUnix.size())};
  } else {
    throw OptionFault("\"" + text + "\" is neither stdio nor unix:PATH");
  }
}

void TakeTheme(Options& options, const std::string& text) {
  if (text != "light" && text != "dark") throw OptionFault("\"" + text + "\" is neither light nor dark");
  options.theme = text == "light" ? Theme::Light : Theme::Dark;
}

void TakeView(Options& options, const std::string& text) {
  if (text != "panels" && text != "operator") throw OptionFault("\"" + text + "\" is neither panels nor operator");
  options.view = text == "operator" ? View::Operator : View::Panels;
}

void TakeLanguage(Options& options, const std::string& text) {
  if (text != "en" && text != "ko") throw OptionFault("\"" + text + "\" is neither en nor ko");
  options.operating.language = text == "ko" ? Language::Korean : Language::English;
}

void TakeSerialPattern(Options& options, const std::string& text) {
  const QRegularExpression pattern(QString::fromStdString(text));
  if (!pattern.isValid()) {
    throw OptionFault("\"" + text + "\" is no regular expression: " + pattern.errorString().toStdString());
  }
  options.operating.serialPattern = text;
}

/// "06:00,14:00,22:00"
void TakeShifts(Options& options, const std::string& text) {
  std::istringstream times(text);
  std::vector<int> starts;
  for (std::string time; std::getline(times, time, ',');) {
    const QTime start = QTime::fromString(QString::fromStdString(time), "HH:mm");
    if (!start.isValid()) throw OptionFault("\"" + time + "\" is no time such as 06:00");
    starts.push_back(start.msecsSinceStartOfDay() / 60000);
  }
  std::sort(starts.begin(), starts.end());
  options.operating.shiftStarts = std::move(starts);
}

void TakeLossesDays(Options& options, const std::string& text) {
  const auto days = QString::fromStdString(text).toInt();
  if (days < 1 || days > 3660) throw OptionFault("\"" + text + "\" is no number of days from 1 to 3660");
  options.operating.lossesDays = days;
}

void TakeInstrument(Options& options, const std::string& text) {
  const auto [address, route] = ParseInstrumentRoute(text);
  if (!options.gpib.instruments.emplace(address, route).second) {
    throw OptionFault("address " + std::to_string(address) + " has a route already");
  }
}

void TakeRecords(Options& options, const std::string& text) {
  constexpr std::string_view kSqlite = "sqlite:";
  if (text == "none") {
    options.records.reset();
  } else if (text.starts_with(kSqlite) && text.size() > kSqlite.size()) {
    options.records = text.substr(kSqlite.size());
  } else if (text.starts_with("postgresql:")) {
    throw OptionFault("a station keeps its records on its own disk: sqlite:PATH or none");
  } else {
    throw OptionFault("\"" + text + "\" is neither sqlite:PATH nor none");
  }
}

void TakeTag(Options& options, const std::string& text) {
  const auto [key, value] = ParseTag(text);
  if (!options.unit.tags.emplace(key, value).second) throw OptionFault("\"" + key + "\" was given already");
}

void AddBench(std::vector<OptionRow>& rows) {
  rows.push_back(
      {.name = "bench",
       .what = "virtual[:KEY=VALUE,...]",
       .means = "Run on the embedded virtual bench",
       .take = [](Options& options, const std::string& text) { options.bench = bench::ParseBenchOptions(text); }});
  const Options defaults;
  for (std::size_t i = 0; i < defaults.com.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    rows.push_back({.name = "com" + number,
                    .what = "PATH",
                    .means = "Device that stands for COM" + number + " [" + defaults.com[i] + "]",
                    .take = [i](Options& options, const std::string& text) { options.com[i] = text; },
                    .ofDevices = true});
  }
  rows.push_back({.name = "gpib",
                  .what = "ROUTE",
                  .means = "native, prologix:HOST[:PORT], prologix:/dev/NAME or vxi11:HOST[:PORT]: the way to the "
                           "instruments [native]",
                  .take = [](Options& options, const std::string& text) { options.gpib.bus = ParseBusRoute(text); },
                  .ofDevices = true});
  rows.push_back({.name = "instrument",
                  .kind = Kind::Repeated,
                  .what = "ADDR=ROUTE",
                  .means = "tcp:HOST:PORT or vxi11:HOST[:PORT][,DEVICE]: the way to one instrument; may be repeated",
                  .take = &TakeInstrument,
                  .ofDevices = true});
  rows.push_back(FlagRow("safe-off",
                         "Switch the supply's output and the load's input off when a run ends without PASS, and when "
                         "the station ends in any way",
                         &Options::safeOff));
}

void AddPlaces(std::vector<OptionRow>& rows) {
  rows.push_back({.name = "system-dir",
                  .what = "DIR",
                  .means = "First place of the installed data files [the installed data folder]",
                  .take = [](Options& options, const std::string& text) { options.systemFolder = text; }});
  rows.push_back({.name = "temp-dir",
                  .what = "DIR",
                  .means = "Second place of the installed data files [a temp folder of the user's]",
                  .take = [](Options& options, const std::string& text) { options.tempFolder = text; }});
  rows.push_back({.name = "automation",
                  .what = "stdio|unix:PATH",
                  .means = "Open the automation port",
                  .take = &TakeAutomation});
  rows.push_back({.name = "trace",
                  .what = "FILE",
                  .means = "Write all that goes over the wires to FILE, 16 MiB and three older parts of it",
                  .take = [](Options& options, const std::string& text) { options.trace = text; }});
  rows.push_back({.name = "explain",
                  .what = "FILE",
                  .means = "Tell a trace as a story, and end",
                  .take = [](Options& options, const std::string& text) { options.explain = text; },
                  .onCommandLineOnly = true});
  rows.push_back(
      {.name = "theme", .what = "light|dark", .means = "Colours of the windows [the desktop's]", .take = &TakeTheme});
}

void AddRecords(std::vector<OptionRow>& rows) {
  rows.push_back({.name = "records",
                  .what = "sqlite:PATH|none",
                  .means =
                      "Where the records of runs go [orvane/records.sqlite in the user's state folder; none on a "
                      "virtual bench]",
                  .take = &TakeRecords});
  rows.push_back(TextRow("station", "NAME", "Name of this station in its records [the machine's host name]",
                         [](Options& options) -> std::string& { return options.station; }));
  rows.push_back(TextRow("serial", "TEXT", "Serial number of the next unit",
                         [](Options& options) -> std::string& { return options.unit.serial; }));
  rows.push_back(TextRow("operator", "TEXT", "Who runs the station; goes into each record",
                         [](Options& options) -> std::string& { return options.unit.operatorName; }));
  rows.push_back(TextRow("part", "TEXT", "Which product the units are; goes into each record",
                         [](Options& options) -> std::string& { return options.unit.part; }));
  rows.push_back({.name = "tag",
                  .kind = Kind::Repeated,
                  .what = "KEY=VALUE",
                  .means = "Goes into each record; may be repeated",
                  .take = &TakeTag});
  rows.push_back(
      FlagRow("ask-serial", "No run begins before a serial number was typed or scanned", &Options::askSerial));
  rows.push_back(
      FlagRow("verify-eeprom", "Read back what a save wrote to the Target's EEPROM", &Options::verifyEeprom));
}

void AddOperatorsPage(std::vector<OptionRow>& rows) {
  rows.push_back({.name = "view",
                  .what = "panels|operator",
                  .means = "On the screen: the engineers' panels, or one page for the operator [panels]",
                  .take = &TakeView});
  rows.push_back({.name = "language",
                  .what = "en|ko",
                  .means = "Of the operator's page [the desktop's]",
                  .take = &TakeLanguage});
  rows.push_back({.name = "serial-pattern",
                  .what = "REGEX",
                  .means = "What a serial number looks like that is given on the operator's page [any]",
                  .take = &TakeSerialPattern});
  rows.push_back({.name = "shifts",
                  .what = "HH:MM,...",
                  .means = "When the shifts begin that the operator's page counts [00:00]",
                  .take = &TakeShifts});
  rows.push_back({.name = "losses-days",
                  .what = "N",
                  .means = "The operator's page warns of a Cable.loss that is older [never]",
                  .take = &TakeLossesDays});
}

std::vector<OptionRow> AllRows() {
  std::vector<OptionRow> rows;
  AddBench(rows);
  AddPlaces(rows);
  AddRecords(rows);
  AddGoldenRows(rows);
  AddEngineerRows(rows);
  AddOperatorsPage(rows);
  AddSharing(rows);
  rows.push_back({.name = "profile",
                  .what = "FILE",
                  .means = "TOML file with any of these settings; the command line wins [orvane/profile.toml in the "
                           "user's folder for settings, unless --bench is given]",
                  .take = [](Options&, const std::string&) {},
                  .onCommandLineOnly = true});
  rows.push_back(
      FlagRow("print-profile", "Print all settings as a profile, then exit", &Options::printProfile, true));
  rows.push_back(FlagRow("headless", "No windows", &Options::headless));
  rows.push_back(FlagRow("initialize",
                         "Initialize the instruments and the Target once; headless, then exit: 0 PASS, 1 FAIL, 2 "
                         "neither",
                         &Options::initialize));
  rows.push_back(FlagRow("list",
                         "List serial devices and the instruments that answer, then exit: 1 when one with an "
                         "--instrument does not answer",
                         &Options::list, true));
  rows.push_back(FlagRow("json", "With --list: as JSON", &Options::json, true));
  return rows;
}

}  // namespace

OptionRow TextRow(const char* name, const char* what, const char* means,
                  const std::function<std::string&(Options&)>& text) {
  return {.name = name, .what = what, .means = means, .take = [text](Options& options, const std::string& value) {
            if (const auto fault = FaultOfUnitText(value)) throw OptionFault("it " + *fault);
            text(options) = value;
          }};
}

OptionRow FlagRow(const char* name, const char* means, bool Options::*flag, bool onCommandLineOnly) {
  return {.name = name,
          .kind = Kind::Flag,
          .means = means,
          .take = [flag](Options& options, const std::string&) { options.*flag = true; },
          .onCommandLineOnly = onCommandLineOnly};
}

const std::vector<OptionRow>& OptionRows() {
  static const std::vector<OptionRow> rows = AllRows();
  return rows;
}

const OptionRow* FindOptionRow(std::string_view name) {
  const auto& rows = OptionRows();
  const auto hit = std::find_if(rows.begin(), rows.end(), [&](const OptionRow& row) { return row.name == name; });
  return hit == rows.end() ? nullptr : &*hit;
}

}  // namespace orvane
