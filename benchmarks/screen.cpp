/// What the windows cost a station: from the program's start to a main window that is served, and a road with windows
/// beside one without.

#include <iostream>
#include <memory>
#include <thread>

#include "figures.h"
#include "screen/screen_station.h"

namespace orvane::test {
namespace {

/// From the process's start to the first turn of its loop behind the main window's exposure.
double StartOn(XDisplay& display, const char* platform) {
  constexpr int kStarts = 9;
  std::vector<double> starts;
  for (int i = 0; i < kStarts; ++i) {
    std::unique_ptr<ScreenStation> station;
    starts.push_back(Milliseconds([&] {
      station = std::make_unique<ScreenStation>(display, Arguments{"--bench", "virtual"}, platform);
    }));
  }
  return Median(starts);
}

/// From the operator's click to the verdict of a Target that stands on a station made ready. The click comes no
/// sooner than a hand gets from button to button.
double RoadOf(Client& station) {
  constexpr std::chrono::milliseconds kHand{500};
  station.answersBoxes = true;
  station.InitializeInstruments();
  std::this_thread::sleep_for(kHand);
  return Milliseconds([&] {
    station.SendClick("OrvaneMain.cmdTargetInitialize");
    if (station.Await("verdict")["result"] != "PASS") throw std::runtime_error("a good unit does not pass");
  });
}

/// Over one without windows. Both stand on the same machine, by turns.
Comparison WindowsBesideNone(XDisplay& display) {
  constexpr int kTurns = 7;
  const Arguments bench{"--automation", "stdio", "--bench", "virtual:seed=7"};
  const auto seen = [&] {
    ScreenStation station(display, bench);
    return RoadOf(station.Port());
  };
  const auto unseen = [&] {
    Child station(Orvane(bench));
    Client port(station);
    return RoadOf(port);
  };
  return ByTurns(kTurns, seen, unseen);
}

int Measure() {
  Table table;
  XDisplay display;
  table.Add("start to a main window that is served, X11", StartOn(display, "xcb"), "ms", 500);
  table.Add("start to a main window that is served, memory", StartOn(display, "offscreen"), "ms", 500);
  table.Add("a road with windows over one without", WindowsBesideNone(display), 1.03);
  return table.Status();
}

}  // namespace
}  // namespace orvane::test

int main() {
  if (!orvane::test::XDisplay::Installed()) {
    std::cerr << "screen: Xvfb is not installed (Debian: xvfb)." << std::endl;
    return 1;
  }
  try {
    return orvane::test::Measure();
  } catch (const std::exception& failure) {
    std::cerr << "screen: " << failure.what() << std::endl;
    return 1;
  }
}
