#pragma once

#include <array>
#include <functional>
#include <string>

#include "program/programs.h"

namespace orvane::test {

/// One instrument in the words of the bench and of the station.
struct Instrument {
  int address;
  const char* place;  ///< Where the bench has it.
  const char* initialize;
  const char* ready;
  const char* identity;
};

inline constexpr std::array kInstruments{
    Instrument{1, "testset", "OrvaneMain.cmdInstrumentInitialize", "TestSetReady", "ORVANE,VIRTUAL TEST SET,0,1.0"},
    Instrument{2, "supply", "OrvaneMain.cmdPSInitialize", "PSReady", "ORVANE,VIRTUAL SUPPLY,0,1.0"},
    Instrument{5, "load", "frmBaseBand.cmdLoaderInitialize", "LoaderReady", "ORVANE,VIRTUAL LOAD,0,1.0"},
};
[[nodiscard]] const Instrument& InstrumentAt(int address);

/// A failure of the supply or the load, which is an event and no failure of the operation: its box has fixed words
/// and the numbers, the notification ahead of it the rest, and the console nothing.
struct ErrorEvent {
  /// "Instrument at address 2, route native: "
  std::string who;
  std::string says;
  bool timedOut;
};

/// Clicks, and expects that the first box to open is that of the event. `atBox` runs while it is open, and gets what
/// the notification says. @return the click's answer
Json ClickIntoErrorBox(Station& station, const std::string& control, const ErrorEvent& event,
                       const std::function<void(const std::string& line)>& atBox);

/// An error that no Initialize has met yet ends the next one behind its "*IDN?", without a box and without a reply;
/// the one after it is sound.
void ExpectInitializeTakesTheErrorAway(Station& station, const Instrument& instrument);

/// Initialize of all three: each is ready and tells its name.
void ExpectInstrumentsReady(Station& station);

}  // namespace orvane::test
