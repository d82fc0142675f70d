// Switches the bench of a station off when the station tells it to, and when the station is no more. It is started by
// the station, stands in a session of its own, and listens on its standard input, whose other end nobody but the
// station holds.

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/route_text.h"
#include "app/safe_off/off_lanes.h"

namespace {

using namespace orvane;

constexpr int kOff = 0;
constexpr int kNotSure = 1;
constexpr int kBadOptions = 64;

GpibRoutes RoutesOf(int argc, char** argv) {
  GpibRoutes routes;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string name = argv[i];
    if (name == "--gpib") {
      routes.bus = ParseBusRoute(argv[i + 1]);
    } else if (name == "--instrument") {
      routes.instruments.insert(ParseInstrumentRoute(argv[i + 1]));
    } else {
      throw OptionFault(name + ": there is no such option");
    }
  }
  return routes;
}

/// The next line of the station's; no value when the station is no more.
std::optional<std::string> NextLine(std::string& received) {
  while (true) {
    if (auto line = TakeLine(received)) return line;
    std::array<char, 512> bytes;
    const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    received.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

/// A station that died meanwhile is told nothing, and shows by its pipe's end.
void Answer(const OffAnswer& answer) {
  const std::string line = LineOf(answer);
  [[maybe_unused]] const auto count = ::write(STDOUT_FILENO, line.data(), line.size());
}

/// The station puts it into the record of its run when it is next started.
void WriteDown(const std::string& name, const std::vector<NotOff>& texts) {
  if (name.empty() || texts.empty()) return;
  std::error_code unmade;
  std::filesystem::create_directories(std::filesystem::path(name).parent_path(), unmade);
  std::ofstream file(name);
  for (const NotOff& each : texts) file << (&each == &texts.front() ? "" : " ") << each.text;
}

/// @return the exit status.
int Serve(const GpibRoutes& routes) {
  OffPlaces places = kUsualOffPlaces;
  std::string note;
  std::string received;
  while (const auto line = NextLine(received)) {
    const auto word = OffWordOf(*line);
    if (!word) continue;
    if (std::holds_alternative<OffFarewell>(*word)) return kOff;
    if (const auto* move = std::get_if<OffMove>(&*word)) places = move->places;
    if (const auto* noted = std::get_if<OffNote>(&*word)) note = noted->file;
    if (const auto* order = std::get_if<OffOrder>(&*word)) {
      Answer({order->number, SwitchBenchOff(routes, places)});
    }
  }
  const auto texts = TextsOf(SwitchBenchOff(routes, places));
  for (const NotOff& each : texts) std::cerr << "orvane-safe-off: " << each.text << std::endl;
  WriteDown(note, texts);
  return texts.empty() ? kOff : kNotSure;
}

}  // namespace

int main(int argc, char** argv) {
  // It ends by itself, seconds behind its station: what ends others must not end it ahead of that.
  for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE}) (void)std::signal(signal, SIG_IGN);
  int status = kBadOptions;
  try {
    const GpibRoutes routes = RoutesOf(argc, argv);
    [[maybe_unused]] const int stayed = ::chdir("/");
    status = Serve(routes);
  } catch (const OptionFault& fault) {
    std::cerr << "orvane-safe-off: " << fault.what() << std::endl;
  }
  // A route that hangs has a thread that would be met by a proper end.
  ::_exit(status);
}
