#include "app/command_line.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <vector>

#include "app/desk.h"
#include "app/route_text.h"

namespace orvane {
namespace {

/// An option with a value that is taken apart as it is met; a fault names the option.
CLI::Option* AddParsed(CLI::App& app, const std::string& name, const std::string& what, const std::string& means,
                       const std::function<void(const std::string&)>& take) {
  const auto takeAll = [name, take](const CLI::results_t& values) {
    for (const std::string& value : values) {
      try {
        if (value.empty()) throw OptionFault("the value is empty");
        take(value);
      } catch (const std::exception& fault) {
        throw CLI::ValidationError(name, fault.what());
      }
    }
    return true;
  };
  return app.add_option(name, takeAll, means)->type_name(what)->type_size(1);
}

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

void TakeInstrument(Options& options, const std::string& text) {
  const auto [address, route] = ParseInstrumentRoute(text);
  if (!options.gpib.instruments.emplace(address, route).second) {
    throw OptionFault("address " + std::to_string(address) + " has a route already");
  }
}

/// A flag that is given a value, "no" above all, is a slip and must not count as the flag.
std::string NoValue(const std::string& given) { return given == "true" ? "" : "it takes no value"; }

void Define(CLI::App& app, Options& options) {
  auto* bench = AddParsed(app, "--bench", "virtual[:KEY=VALUE,...]", "Run on the embedded virtual bench",
                          [&](const std::string& text) { options.bench = bench::ParseBenchOptions(text); });
  for (std::size_t i = 0; i < options.com.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    AddParsed(app, "--com" + number, "PATH", "Device that stands for COM" + number + " [" + options.com[i] + "]",
              [&options, i](const std::string& text) { options.com[i] = text; })
        ->excludes(bench);
  }
  AddParsed(
      app, "--gpib", "ROUTE",
      "native, prologix:HOST[:PORT], prologix:/dev/NAME or vxi11:HOST[:PORT]: the way to the instruments [native]",
      [&](const std::string& text) { options.gpib.bus = ParseBusRoute(text); })
      ->excludes(bench);
  AddParsed(app, "--instrument", "ADDR=ROUTE",
            "tcp:HOST:PORT or vxi11:HOST[:PORT][,DEVICE]: the way to one instrument; may be repeated",
            [&](const std::string& text) { TakeInstrument(options, text); })
      ->expected(1, CLI::detail::expected_max_vector_size)
      ->allow_extra_args(false)
      ->excludes(bench);
  AddParsed(app, "--system-dir", "DIR", "First place of the installed data files [the installed data folder]",
            [&](const std::string& text) { options.systemFolder = text; });
  AddParsed(app, "--temp-dir", "DIR", "Second place of the installed data files [a temp folder of the user's]",
            [&](const std::string& text) { options.tempFolder = text; });
  AddParsed(app, "--automation", "stdio|unix:PATH", "Open the automation port",
            [&](const std::string& text) { TakeAutomation(options, text); });
  AddParsed(app, "--trace", "FILE", "Write all that goes over the wires to FILE, 16 MiB and three older parts of it",
            [&](const std::string& text) { options.trace = text; });
  AddParsed(app, "--explain", "FILE", "Tell a trace as a story, and end",
            [&](const std::string& text) { options.explain = text; });
  AddParsed(app, "--theme", "light|dark", "Colours of the windows [the desktop's]",
            [&](const std::string& text) { TakeTheme(options, text); });
  app.add_flag("--headless", options.headless, "No windows")->check(NoValue);
  app.add_flag("--initialize", options.initialize,
               "Initialize the instruments and the Target once; headless, then exit: 0 PASS, 1 FAIL, 2 neither")
      ->check(NoValue);
  auto* list = app.add_flag("--list", options.list, "List serial devices and the instruments that answer, then exit");
  list->check(NoValue);
  for (const char* runs : {"--bench", "--system-dir", "--temp-dir", "--automation", "--initialize"}) {
    list->excludes(app.get_option(runs));
  }
}

}  // namespace

std::variant<Options, EndAtOnce> ParseCommandLine(int argc, const char* const* argv) {
  Options options;
  CLI::App app("Calibration and test station for one dual-band GSM handset", "orvane");
  app.set_version_flag("--version", std::string("orvane ") + ORVANE_VERSION);
  app.set_help_flag("--help", "Print this help and exit");
  Define(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return EndAtOnce{0, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return EndAtOnce{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& fault) {
    return EndAtOnce{kBadOptions, "orvane: " + OneLine(fault.what())};
  }
  return options;
}

}  // namespace orvane
