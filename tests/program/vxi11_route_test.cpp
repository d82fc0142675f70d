// The instruments of virtual-bench over VXI-11: by its gateway as a whole, and one by one.

#include <gtest/gtest.h>

#include <optional>

#include "program/programs.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

Arguments OverGateway(WiredBench& bench) {
  return {"--com1", bench.Place("target"), "--gpib", "vxi11:" + bench.Place("vxi11")};
}

Arguments OneByOne(WiredBench& bench) {
  const std::string place = "vxi11:" + bench.Place("vxi11");
  return {"--com1",       bench.Place("target"),     "--instrument", "1=" + place,
          "--instrument", "2=" + place + ",gpib0,2", "--instrument", "5=" + place + ",gpib0,5"};
}

TEST(Vxi11Route, TakesAUnitThroughTheWholeRoadAsTheEmbeddedBenchDoes) {
  const TempFolder embedded;
  const TempFolder folders[2];
  WiredBench behindGateway({"--seed", "7", "--store", folders[0].Path().string()});
  WiredBench alone({"--seed", "7", "--store", folders[1].Path().string()});
  const auto ends = InitializeOnEach(
      {{"--bench", "virtual:seed=7,store=" + embedded.Path().string()}, OverGateway(behindGateway), OneByOne(alone)});
  for (const auto& end : ends) {
    EXPECT_EQ(end.status, 0) << end.output;
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(end.output, HasSubstr(" PASS\n"));
  }
  ASSERT_EQ(ContentOf(embedded / "eeprom.bin").size(), 1816U);
  for (const TempFolder& folder : folders) {
    for (const char* file : {"eeprom.bin", "flash100.txt"}) {
      EXPECT_EQ(ContentOf(folder / file), ContentOf(embedded / file)) << file;
    }
  }
}

TEST(Vxi11Route, WithNobodyAtItsEndSaysSoAndEndsWithoutAVerdictToStandOn) {
  WiredBench bench;
  const std::string nobody = "vxi11:" + OwnLoopbackAddress() + ":1";
  const auto ends = InitializeOnEach({{"--com1", bench.Place("target"), "--gpib", nobody}});
  EXPECT_EQ(ends[0].status, 2);
  EXPECT_THAT(ends[0].errors,
              HasSubstr("ORVANE: Instrument at address 1, route " + nobody +
                        ",gpib0,1: no connection: Connection refused. / ibsta = &H8000, iberr = 2 -> OK\n"));
  EXPECT_THAT(ends[0].errors, HasSubstr("Error: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"));
  EXPECT_THAT(ends[0].errors, HasSubstr("receive: The test set was not initialized.\n"));
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
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState("CalMode", "ALL");
  bench->Kill();
  EXPECT_EQ(station.AnswerTo(run)["error"]["code"], -32005);
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");

  bench.emplace(Arguments{"--target", folder / "target", "--vxi11", place});
  station.InitializeInstruments();
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict;
}

}  // namespace
}  // namespace orvane::test
