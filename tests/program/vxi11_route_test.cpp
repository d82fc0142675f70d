// The instruments of virtual-bench over VXI-11: by its gateway as a whole, and one by one.

#include <gtest/gtest.h>

#include <optional>

#include "program/whole_road.h"

namespace orvane::test {
namespace {

Arguments OverGateway(const WiredBench& bench) {
  return {"--com1", bench.Place("target"), "--gpib", "vxi11:" + bench.Place("vxi11")};
}

Arguments OneByOne(const WiredBench& bench) {
  const std::string place = "vxi11:" + bench.Place("vxi11");
  return {"--com1",       bench.Place("target"),     "--instrument", "1=" + place,
          "--instrument", "2=" + place + ",gpib0,2", "--instrument", "5=" + place + ",gpib0,5"};
}

TEST(Vxi11Route, TakesAUnitThroughTheWholeRoadAsTheEmbeddedBenchDoes) {
  ExpectTheRoadOfTheEmbeddedBench("7", {&OverGateway, &OneByOne});
}

TEST(Vxi11Route, WithNobodyAtItsEndSaysSoAndEndsWithoutAVerdictToStandOn) {
  WiredBench bench;
  const std::string nobody = "vxi11:" + OwnLoopbackAddress() + ":1";
  const auto ends = InitializeOnEach({{"--com1", bench.Place("target"), "--gpib", nobody}});
  ExpectNoInstruments(ends[0],
                      nobody + ",gpib0,1: no connection: Connection refused. / ibsta = &H8000, iberr = 2 -> OK\n");
}

TEST(Vxi11Route, OneInstrumentThatIsAbsentLeavesTheOthersAlone) {
  WiredBench bench({"--fault", "supply-absent"});
  Station station(OverGateway(bench));
  EXPECT_EQ(station.Click("OrvaneMain.cmdPSInitialize")["result"], Json::object());
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &H8000\riberr = 2");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  EXPECT_EQ(station.Click("frmBaseBand.cmdLoaderInitialize")["result"], Json::object());
  EXPECT_EQ(station.State("PSReady"), false);
  EXPECT_EQ(station.State("TestSetReady"), true);
  EXPECT_EQ(station.State("LoaderReady"), true);
}

TEST(Vxi11Route, AnInstrumentThatFallsSilentIsATimeOut) {
  WiredBench bench({"--fault", "testset-silent@2", "--fault", "supply-silent"});
  Station station(OverGateway(bench));
  station.Set("OrvaneMain.cboTimeOut", "select", "300ms");
  // The first query is that of the start.
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);
  EXPECT_EQ(station.Await("failure")["text"], "Instrument at address 1, route vxi11:" + bench.Place("vxi11") +
                                                  ",gpib0,1: no reply within 300 ms.\r\nibsta = &HC000, iberr = 6");
  (void)station.Await("box");
  station.Set("frmBaseBand.cboPSTimeOut", "select", "300ms");
  EXPECT_EQ(station.Click("OrvaneMain.cmdPSInitialize")["result"], Json::object());
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &HC000\riberr = 6");
}

TEST(Vxi11Route, AGatewayThatIsBackIsTakenUpWithoutARestart) {
  const TempFolder folder;
  const std::string host = OwnLoopbackAddress();
  std::optional<WiredBench> bench(Arguments{"--target", folder / "target", "--vxi11", host + ":0"});
  const std::string place = bench->Place("vxi11");
  Station station({"--com1", folder / "target", "--gpib", "vxi11:" + place});
  ExpectRunEndsWithItsBench(station, *bench, "CalMode", "ALL");

  bench.emplace(Arguments{"--target", folder / "target", "--vxi11", place});
  ExpectWholeRun(station);
}

}  // namespace
}  // namespace orvane::test
