#include "screen/screen_station.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 120s;
/// Somebody who looks at the screen again and again.
constexpr auto kGlance = 5ms;

Arguments Windows(const Arguments& arguments) {
  Arguments all{ORVANE_WINDOWS_PROGRAM};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return all;
}

/// The whereabouts plugin's answer; empty when it does not answer.
std::string AnswerOf(const std::string& path, const std::string& question) {
  const int socket = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  std::array<char, 256> text{};
  ssize_t count = 0;
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      ::send(socket, question.data(), question.size(), MSG_NOSIGNAL) > 0) {
    pollfd ready{socket, POLLIN, 0};
    if (::poll(&ready, 1, static_cast<int>(std::chrono::milliseconds(kLimit).count())) > 0) {
      count = ::recv(socket, text.data(), text.size(), 0);
    }
  }
  ::close(socket);
  return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

void LookUntil(const std::function<bool()>& isSo, const std::string& orElse) {
  for (const auto deadline = std::chrono::steady_clock::now() + kLimit; !isSo();) {
    if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(orElse);
    std::this_thread::sleep_for(kGlance);
  }
}

/// What the toolkit and its libraries leave to the system at their end is no leak of the station's.
std::string LeakOptions(const std::string& file) {
  Fill(file, "leak:libdbus\nleak:libXcursor\nleak:libQt6\nleak:libfontconfig\n");
  return "print_suppressions=0:suppressions=" + file;
}

}  // namespace

ScreenStation::ScreenStation(XDisplay& display, const Arguments& arguments, const char* platform, const char* window)
    : display_(display),
      displayName_("DISPLAY", display.Name()),
      runtimeFolder_("XDG_RUNTIME_DIR", folder_.Path().string()),
      platform_("QT_QPA_PLATFORM", platform),
      plugins_("QT_PLUGIN_PATH", WHEREABOUTS_FOLDER),
      whereabouts_("QT_QPA_GENERIC_PLUGINS", "whereabouts:" + (folder_ / "where")),
      leaks_("LSAN_OPTIONS", LeakOptions(folder_ / "leaks")),
      process_(Windows(arguments)) {
  port_.answersBoxes = false;
  (void)Await(window);
}

std::optional<ScreenStation::Place> ScreenStation::Find(const std::string& widget) const {
  std::istringstream answer(AnswerOf(folder_ / "where", widget));
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  Place place;
  if (!(answer >> x >> y >> width >> height >> place.enabled)) return std::nullopt;
  place.area = QRect(x, y, width, height);
  std::getline(answer >> std::ws, place.tip);
  return place;
}

ScreenStation::Place ScreenStation::Await(const std::string& widget) const {
  std::optional<Place> place;
  LookUntil([&] { return (place = Find(widget)).has_value(); }, widget + " is never seen");
  return *place;
}

void ScreenStation::AwaitGone(const std::string& widget) const {
  LookUntil([&] { return !Find(widget); }, widget + " never goes");
}

ScreenStation::Place ScreenStation::AwaitEnabled(const std::string& widget) const {
  std::optional<Place> place;
  LookUntil([&] { return (place = Find(widget)) && place->enabled; }, widget + " takes no click");
  return *place;
}

void ScreenStation::Click(const std::string& widget) { display_.Click(AwaitEnabled(widget).area.center()); }

void ScreenStation::ClickToType(const std::string& widget) {
  display_.GiveKeyboard(AwaitEnabled(widget).area.center());
  Click(widget);
}

void ScreenStation::InitializeInstruments() {
  for (const char* button :
       {"OrvaneMain/cmdInstrumentInitialize", "OrvaneMain/cmdPSInitialize", "OrvaneMain/Command1",
        "frmBaseBand/cmdLoaderInitialize", "frmBaseBand/cmdBaseBandClose"}) {
    Click(button);
  }
}

void ScreenStation::InitializeAll() {
  InitializeInstruments();
  Click("OrvaneMain/cmdTargetInitialize");
}

}  // namespace orvane::test
