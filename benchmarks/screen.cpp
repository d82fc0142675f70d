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
/// @param view the windows that are looked at, and the first of them
Comparison WindowsBesideNone(XDisplay& display, const Arguments& view, const char* window) {
  constexpr int kTurns = 7;
  const Arguments bench{"--automation", "stdio", "--bench", "virtual:seed=7"};
  const auto seen = [&] {
    Arguments arguments = bench;
    arguments.insert(arguments.end(), view.begin(), view.end());
    ScreenStation station(display, arguments, "xcb", window);
    return RoadOf(station.Port());
  };
  const auto unseen = [&] {
    Child station(Orvane(bench));
    Client port(station);
    return RoadOf(port);
  };
  return ByTurns(kTurns, seen, unseen);
}

/// What an operator waits for, as medians: from a key to its letter on the page, and from the key that ends a serial
/// number to the line that is open, over which the first byte goes at once.
void MeasureKeys(XDisplay& display, Table& table) {
  constexpr int kTimes = 9;
  constexpr std::uint32_t kReturnKey = 0xff0d;
  std::vector<double> letters;
  std::vector<double> starts;
  for (int i = 0; i < kTimes; ++i) {
    ScreenStation station(display, {"--automation", "stdio", "--bench", "virtual:seed=7", "--view", "operator"},
                          "xcb", "operatorPage");
    station.Port().InitializeInstruments();
    const auto field = station.AwaitEnabled("operatorPage/serial");
    display.GiveKeyboard(field.area.center());
    const QImage before = station.Shown(field);
    letters.push_back(Milliseconds([&] {
      station.Type("a");
      while (station.Shown(field) == before) {
      }
    }));
    starts.push_back(Milliseconds([&] {
      display.Press(kReturnKey);
      while (station.Port().State("SerialPortState") != true) {
      }
    }));
    (void)station.Port().Await("verdict");
  }
  table.Add("a key to its letter on the operator's page", Median(letters), "ms", 50);
  table.Add("the end of a serial number to the line that is open", Median(starts), "ms", 100);
}

int Measure() {
  Table table;
  XDisplay display;
  table.Add("start to a main window that is served, X11", StartOn(display, "xcb"), "ms", 500);
  table.Add("start to a main window that is served, memory", StartOn(display, "offscreen"), "ms", 500);
  MeasureKeys(display, table);
  table.Add("a road with windows over one without", WindowsBesideNone(display, {}, "OrvaneMain"), 1.03);
  table.Add("a road with the operator's page over one without",
            WindowsBesideNone(display, {"--view", "operator"}, "operatorPage"), 1.01);
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
