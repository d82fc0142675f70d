// The instruments of virtual-bench behind its `++` adapters, on TCP and on a serial device.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

#include "program/programs.h"

namespace orvane::test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

Arguments Behind(const WiredBench& bench, const std::string& adapter) {
  return {"--com1", bench.Place("target"), "--gpib", "prologix:" + bench.Place(adapter)};
}

TEST(AdapterRoute, TakesAUnitThroughTheWholeRoadAsTheEmbeddedBenchDoes) {
  const TempFolder embedded;
  const TempFolder folders[2];
  const WiredBench onSocket({"--seed", "11", "--store", folders[0].Path().string()});
  const WiredBench onTerminal({"--seed", "11", "--store", folders[1].Path().string()});
  const auto ends = InitializeOnEach({{"--bench", "virtual:seed=11,store=" + embedded.Path().string()},
                                      Behind(onSocket, "adapter"),
                                      Behind(onTerminal, "adapter-tty")});
  for (const auto& end : ends) {
    EXPECT_EQ(end.status, 0) << end.output;
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(end.output, HasSubstr(" PASS\n"));
  }
  ASSERT_EQ(ContentOf(embedded / "eeprom.bin").size(), 1816U);
  for (const TempFolder& folder : folders) {
    for (const char* file : {"eeprom.bin", "flash100.txt"}) {
      EXPECT_TRUE(ContentOf(folder / file) == ContentOf(embedded / file)) << file;
    }
  }
}

TEST(AdapterRoute, AFaultOfTheUnitIsItsVerdict) {
  const WiredBench bench({"--fault", "battery"});
  Arguments arguments = Behind(bench, "adapter");
  arguments.emplace_back("--initialize");
  const auto end = RunOrvane(arguments);
  EXPECT_EQ(end.status, 1) << end.output;
  EXPECT_EQ(end.errors, "Warning: Battery Calibration ERROR. -> OK\n");
}

/// What stands for the adapter, and what Initialize says to it.
struct NoAdapter {
  std::string route;
  const char* why;
};

TEST(AdapterRoute, WithNoAdapterAtItsEndSaysSoAndEndsWithoutAVerdictToStandOn) {
  const WiredBench bench;
  const NoAdapter rows[] = {
      {OwnLoopbackAddress() + ":1", "no connection: Connection refused."},
      {"/dev/no-such-adapter", "there is no such device."},
      {"/dev/null", "the device is no serial line."},
  };
  std::vector<Arguments> options;
  for (const NoAdapter& row : rows) {
    options.push_back({"--com1", bench.Place("target"), "--gpib", "prologix:" + row.route});
  }
  for (std::size_t i = 0; i < options.size(); ++i) {
    SCOPED_TRACE(rows[i].route);
    const auto ends = InitializeOnEach({options[i]});
    EXPECT_EQ(ends[0].status, 2);
    EXPECT_THAT(ends[0].errors, HasSubstr("ORVANE: Instrument at address 1, route prologix:" + rows[i].route + ": " +
                                          rows[i].why + " / ibsta = &H8000, iberr = 2 -> OK\n"));
    EXPECT_THAT(ends[0].errors, HasSubstr("Error: Unable to open device / ibsta = &H8000 / iberr = 2 -> OK\n"));
    EXPECT_THAT(ends[0].errors, HasSubstr("receive: The test set was not initialized.\n"));
  }
}

TEST(AdapterRoute, AnInstrumentThatFallsSilentIsATimeOutAndLeavesTheOthersAlone) {
  const WiredBench bench({"--fault", "supply-silent"});
  Station station(Behind(bench, "adapter"));
  station.Set("frmBaseBand.cboPSTimeOut", "select", "300ms");
  EXPECT_EQ(station.Click("OrvaneMain.cmdPSInitialize")["result"], Json::object());
  EXPECT_EQ(station.Await("box")["text"], "Unable to open device\ribsta = &HC000\riberr = 6");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  EXPECT_EQ(station.Click("frmBaseBand.cmdLoaderInitialize")["result"], Json::object());
  EXPECT_EQ(station.State("TestSetReady"), true);
  EXPECT_EQ(station.State("LoaderReady"), true);
}

TEST(AdapterRoute, WithoutPermissionForTheDeviceIsToldWithTheGroupThatHasIt) {
  const WiredBench bench;
  constexpr mode_t kGroupAlone = 0060;
  ASSERT_EQ(::chmod(bench.Place("adapter-tty").c_str(), kGroupAlone), 0);
  Arguments arguments = Behind(bench, "adapter-tty");
  arguments.emplace_back("--initialize");
  Child station(Orvane(arguments), {"/", true});
  const auto end = station.WaitForEnd();
  if (end.status == 127) GTEST_SKIP() << "an ordinary user cannot reach the program";
  EXPECT_THAT(end.errors, ContainsRegex("Instrument at address 1, route prologix:" + bench.Place("adapter-tty") +
                                        ": permission denied. Is the user in the group \"[a-z]+\"\\?"));
}

TEST(AdapterRoute, OneStationHoldsTheDevice) {
  const WiredBench bench;
  Station first(Behind(bench, "adapter-tty"));
  EXPECT_EQ(first.Click("OrvaneMain.cmdInstrumentInitialize")["result"], Json::object());
  Station second(Behind(bench, "adapter-tty"));
  EXPECT_EQ(second.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);
  EXPECT_THAT(std::string(second.Await("failure")["text"]),
              ContainsRegex(": the device is in use by another program: orvane \\(process [0-9]+\\)\\."));
}

class AdapterBack : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Wires, AdapterBack, testing::Values("adapter", "adapter-tty"));

TEST_P(AdapterBack, IsTakenUpWithoutARestart) {
  const TempFolder folder;
  const std::string host = OwnLoopbackAddress();
  const std::string which = GetParam();
  std::optional<WiredBench> bench(
      Arguments{"--target", folder / "target", "--adapter", host + ":0", "--adapter-tty", folder / "adapter"});
  const std::string socket = bench->Place("adapter");
  const std::string place = which == "adapter" ? socket : folder / "adapter";
  Station station({"--com1", folder / "target", "--gpib", "prologix:" + place});
  station.InitializeInstruments();
  const int run = station.SendClick("OrvaneMain.cmdTargetInitialize");
  station.AwaitState("CalMode", "ALL");
  bench->Kill();
  EXPECT_EQ(station.AnswerTo(run)["error"]["code"], -32005);
  EXPECT_EQ(station.Await("verdict")["result"], "NONE");
  EXPECT_EQ(station.Click("OrvaneMain.cmdInstrumentInitialize")["error"]["code"], -32005);

  bench.emplace(Arguments{"--target", folder / "target", "--adapter", socket, "--adapter-tty", folder / "adapter"});
  station.InitializeInstruments();
  EXPECT_EQ(station.Click("OrvaneMain.cmdTargetInitialize")["result"], Json::object());
  const Json verdict = station.Await("verdict");
  EXPECT_EQ(verdict["result"], "PASS");
  EXPECT_EQ(verdict["complete"], true) << verdict;
}

}  // namespace
}  // namespace orvane::test
