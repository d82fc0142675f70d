// The station on the system's GPIB library, for which a stand-in is found first: it reaches the bench on wires.

#include <gtest/gtest.h>

#include <optional>

#include "program/whole_road.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

/// The folder in which the system's library is found first.
Variable LibraryIn(const std::string& folder) { return {"LD_LIBRARY_PATH", folder}; }

constexpr const char* kInstruments = "GPIB_STAND_IN";
std::string PlacesOf(const WiredBench& bench) {
  return "1=" + bench.Place("testset") + " 2=" + bench.Place("supply") + " 5=" + bench.Place("load");
}
Variable Instruments(const WiredBench& bench) { return {kInstruments, PlacesOf(bench)}; }

Variable Faults(const std::string& faults) { return {"GPIB_STAND_IN_FAULTS", faults}; }

TEST(NativeRoute, TakesAUnitThroughTheWholeRoadAsTheEmbeddedBenchDoes) {
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  std::optional<Variable> instruments;
  ExpectTheRoadOfTheEmbeddedBench("42", {[&](const WiredBench& bench) {
                                    instruments.emplace(kInstruments, PlacesOf(bench));
                                    return Arguments{"--com1", bench.Place("target"), "--gpib", "native"};
                                  }});
}

TEST(NativeRoute, AFaultOfTheUnitIsItsVerdict) {
  const WiredBench bench({"--fault", "battery"});
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  const auto instruments = Instruments(bench);
  const auto end = RunOrvane({"--initialize", "--com1", bench.Place("target")});
  EXPECT_EQ(end.status, 1) << end.output;
  EXPECT_EQ(end.errors, "Warning: Battery Calibration ERROR. -> OK\n");
}

TEST(NativeRoute, WithoutAUsableLibraryEachInitializeSaysSoAndTheRunEndsWithoutInstruments) {
  const TempFolder folder;
  Fill(folder / "libgpib.so.0", "");
  const std::pair<std::string, std::string> rows[] = {
      {folder.Path().string(), "the system's GPIB library cannot be loaded: "},
      {GPIB_STAND_IN_LACKING_FOLDER, "the system's GPIB library libgpib.so.0 lacks ibclr, which the station needs."},
  };
  for (const auto& [place, what] : rows) {
    const WiredBench bench;
    const auto library = LibraryIn(place);
    const auto end = RunOrvane({"--initialize", "--com1", bench.Place("target")});
    ExpectNoInstruments(end, "native: " + what);
  }
}

TEST(NativeRoute, WhatThePanelOfTheSupplySaysGoesToTheLibraryAsItIs) {
  const TempFolder folder;
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  const Variable instruments("GPIB_STAND_IN", "9=echo");
  const Variable journal("GPIB_STAND_IN_JOURNAL", folder / "calls");
  Station station(Arguments{});
  station.Set("frmBaseBand.cboPSPrimAddress", "select", "9");
  station.Set("frmBaseBand.cboPSSecAddress", "select", "97");
  station.Set("frmBaseBand.cboPSTimeOut", "select", "None");
  station.Set("frmBaseBand.TxtPSBufferSize", "text", "17");
  station.Click("frmBaseBand.cmdPSInitialize");
  station.Click("frmBaseBand.cmdPSReset");
  EXPECT_THAT(ContentOf(folder / "calls"),
              testing::EndsWith("ibdev 0 9 97 0 1 0\nibwrt 9 *IDN?\nibrd 9 17\nibwrt 9 VOLT 4.21\nibwrt 9 OUTPUT ON\n"
                                "ibwrt 9 *RST\nibloc 9\nibonl 9 0\n"));
  EXPECT_TRUE(station.Heard("box").empty());

  station.Set("frmBaseBand.txtPSBoardNumber", "text", "1");
  station.Click("frmBaseBand.cmdPSInitialize");
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &H8000\riberr = 2");
  EXPECT_EQ(station.State("PSReady"), false);
  const Json told = station.Await("instrument");
  EXPECT_EQ(told["address"], 9);
  EXPECT_EQ(told["route"], "native");
  EXPECT_EQ(told["text"],
            "Instrument at address 9, secondary 97, board 1, route native: the GPIB library opens no device "
            "(ibdev: ibsta &H8100, iberr 7 (there is no such board)).");
  EXPECT_EQ(station.State("ibsta"), 0x8000);
  EXPECT_EQ(station.State("iberr"), 2);
}

TEST(NativeRoute, ALoadThatDoesNotAnswerIsTheErrorEventWithTheNumbersOfATimeOut) {
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  const WiredBench bench({"--fault", "load-silent"});
  const auto instruments = Instruments(bench);
  Station station(Arguments{});
  station.Set("frmBaseBand.cboLoaderTimeOut", "select", "100ms");
  station.Click("frmBaseBand.cmdLoaderInitialize");
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &HC000\riberr = 6");
  EXPECT_THAT(
      std::string(station.Await("instrument")["text"]),
      HasSubstr("Instrument at address 5, route native: no reply within 100 ms (ibrd: ibsta &HC100, iberr 6"));
}

TEST(NativeRoute, AnInstrumentThatIsSwitchedOnLaterIsFoundByTheNextInitialize) {
  const std::string place = OwnLoopbackAddress() + ":5025";
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  const Variable instruments("GPIB_STAND_IN", "2=" + place);
  Station station(Arguments{});
  station.Click("OrvaneMain.cmdPSInitialize");
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &H8000\riberr = 2");
  EXPECT_EQ(station.State("PSReady"), false);
  EXPECT_EQ(station.Await("instrument")["text"],
            "Instrument at address 2, route native: the message was not sent (ibwrt: ibsta &H8100, iberr 2 "
            "(nobody listens)).");

  const WiredBench bench({"--supply", place});
  station.Click("OrvaneMain.cmdPSInitialize");
  EXPECT_EQ(station.State("PSReady"), true);
  EXPECT_EQ(station.Heard("box").size(), 1U);
}

TEST(NativeRoute, AfterATimeOutTheNextInitializeReadsItsOwnReply) {
  const WiredBench bench;
  const TempFolder folder;
  const auto library = LibraryIn(GPIB_STAND_IN_FOLDER);
  const auto instruments = Instruments(bench);
  // The station has greeted the test set once by itself when the operator comes.
  const auto faults = Faults("ibrd/1@2=C000:6");
  const Variable journal("GPIB_STAND_IN_JOURNAL", folder / "calls");
  Station station(Arguments{});
  station.Set("OrvaneMain.cboTimeOut", "select", "3s");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);
  EXPECT_EQ(
      station.Await("failure")["text"],
      "Instrument at address 1, route native: no reply within 3 s (ibrd: ibsta &HC100, iberr 6 (the transfer was "
      "aborted)).\r\nibsta = &HC000, iberr = 6");
  EXPECT_EQ(station.State("TestSetReady"), false);

  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  EXPECT_EQ(station.State("TestSetReady"), true);
  station.Click("OrvaneMain.cmdInsturmentReset");
  EXPECT_THAT(ContentOf(folder / "calls"),
              testing::EndsWith("ibdev 0 1 0 12 1 0\nibwrt 1 *IDN?\nibrd 1 1000\nibtmo 1 11\nibclr 1\n"
                                "ibonl 1 0\nibdev 0 1 0 12 1 0\nibwrt 1 *IDN?\nibrd 1 1000\n"
                                "ibwrt 1 RFAN:CONT:AUTO OFF\nibwrt 1 *RST\nibloc 1\nibonl 1 0\n"));
}

}  // namespace
}  // namespace orvane::test
